// SPDX-License-Identifier: Apache-2.0
// TableDefinition: a table's columns, indexes and maps as its definition pages tell them.
#pragma once

#include "jet/format/PageNumber.h"
#include "jet/format/RowLayout.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet::format {

enum class ColumnType : std::uint8_t {
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
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Numeric = 16,
};

inline constexpr int kLongestText = 255;  // characters of a text column

// Bytes of a value of this type; nothing where each column or row has its own length.
[[nodiscard]] std::optional<std::uint16_t> LengthOf(ColumnType type);

// The order texts are compared and keyed in: language id and version of its tables. Version 97
// (kJet3Tables) stands for the tables of Jet 3, whose files name none.
struct SortOrder {
    std::uint16_t language = 1033;
    std::uint8_t version = 0;
    friend bool operator==(const SortOrder&, const SortOrder&) = default;
};

struct ColumnDefinition {
    std::string name;
    ColumnType type = ColumnType::Long;
    std::uint16_t number = 0;         // bit in the null mask; never reused in the table's life
    std::uint16_t ordinal = 0;        // place in the field order
    std::uint16_t variableIndex = 0;  // place among the variable columns
    std::uint16_t fixedOffset = 0;    // bytes from the start of the fixed part
    std::uint16_t length = 0;         // bytes
    bool fixed = true;
    bool autoNumber = false;  // counter of a long column
    bool autoGuid = false;
    bool compressed = false;                     // text may be stored compressed
    std::uint8_t flags = 0;                      // as stored
    std::uint8_t precision = 0, scale = 0;       // Numeric only
    SortOrder sortOrder;                         // Text and Memo
    std::uint16_t codePage = 0;                  // of texts; 0 UTF-16
    std::uint16_t country = 0;                   // Jet 3: as the header page tells it
    std::optional<RowId> ownedPages, freePages;  // long-value maps of Memo and Ole
};

struct IndexColumn {
    std::uint16_t columnNumber = 0;
    bool ascending = true;
};

// One B-tree. Several named indexes may share it.
struct IndexDefinition {
    std::vector<IndexColumn> columns;
    RowId usageMap;
    PageNumber root = PageNumber::None;
    std::uint8_t flags = 0;
    bool unique = false, ignoreNulls = false, required = false;
    std::uint32_t statisticsOffset = 0;  // of its entry counts, in the joined definition bytes
};

// A named index, or one side of a relationship.
struct NamedIndex {
    std::string name;
    std::uint32_t number = 0;  // among the named ones
    std::uint32_t tree = 0;    // which IndexDefinition
    std::uint8_t kind = 0;     // 0 ordinary, 1 primary key, 2 relationship
    std::uint8_t relationKind = 0;
    std::uint32_t relatedIndex = 0xFFFFFFFF;
    PageNumber relatedTable = PageNumber::None;
    std::uint8_t cascadeUpdates = 0, cascadeDeletes = 0;
};

struct TableDefinition {
    PageNumber page = PageNumber::None;  // first definition page: the table's identity
    std::vector<PageNumber> pages;       // the whole chain
    RowLayout row = kRowJet4;
    bool systemTable = false;
    std::uint32_t rowCount = 0;
    std::uint32_t lastAutoNumber = 0;
    std::uint16_t columnCounter = 0;  // columns ever made, dropped ones included
    std::uint16_t variableColumnCounter = 0;
    // Rows written when the table had at most so many columns have no variable part.
    std::uint16_t columnsBeforeVariable = 0;
    RowId ownedPages, freePages;
    std::vector<ColumnDefinition> columns;  // in ordinal order
    std::vector<IndexDefinition> indexes;
    std::vector<NamedIndex> namedIndexes;

    // Place in `columns`. Rule: names compare without regard to case.
    [[nodiscard]] std::optional<std::size_t> FindColumn(std::string_view name) const;
    // Place of the column with that number.
    [[nodiscard]] std::optional<std::size_t> FindNumber(std::uint16_t number) const;
    // Place of the counter column.
    [[nodiscard]] std::optional<std::size_t> FindAutoNumber() const;
};

}  // namespace jet::format
