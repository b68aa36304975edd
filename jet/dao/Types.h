// SPDX-License-Identifier: Apache-2.0
// Types: the codes and small values that DAO's calls speak in.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>

namespace dao {

// File formats, as the options of CreateDatabase number them.
enum class DatabaseVersion : int {
    Jet3 = 32,  // Access 97
    Jet4 = 64,  // Access 2000 to 2003
};

// Whether the pages of a new file are stored under a key, so that no text can be read in them.
enum class DatabaseEncoding : int { Plain = 0, Encoded = 2 };

// Field type codes, as DAO numbers them.
enum class FieldType : int {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 20,
};

// Field attribute bits. dbAutoIncrField is 16.
inline constexpr int kFixedField = 1;
inline constexpr int kVariableField = 2;
inline constexpr int kAutoIncrField = 16;

enum class RecordsetType : int {
    Default = 0,
    Table = 1,
    Dynaset = 2,
    Snapshot = 4,
    ForwardOnly = 8
};
enum class EditMode : int { None = 0, InProgress = 1, Add = 2 };

// Options of Execute and OpenRecordset.
inline constexpr int kReadOnlySet = 4;
inline constexpr int kFailOnError = 128;

// What Bookmark and LastModified hold: a row of one record set, opaque to everybody else.
struct BookmarkValue {
    std::uint64_t recordset = 0;
    std::uint32_t page = 0;
    std::uint16_t slot = 0;
    friend auto operator<=>(const BookmarkValue&, const BookmarkValue&) = default;
};

}  // namespace dao
