// SPDX-License-Identifier: Apache-2.0
// TableDesign: from a wish to a table definition that lacks only its place in the file.
#pragma once

#include "jet/catalog/NewTable.h"
#include "jet/format/FileVersion.h"
#include "jet/format/SortKey.h"

namespace jet::catalog {

// Errors: 3125 when `name` cannot name a table, field or index.
void RequireGoodName(std::string_view name);

// How a database keeps and compares its texts.
struct DatabaseText {
    format::SortOrder order;
    std::uint16_t codePage = 0;  // 0 UTF-16
    std::uint16_t country = 0;
};
// Of a new database.
[[nodiscard]] DatabaseText NewDatabaseText(const format::FileVersion& version);

inline constexpr std::size_t kMostIndexes = 32;  // of a table

// Whether two trees agree in columns, directions and flags, so that one can serve for both.
[[nodiscard]] bool SameTree(const format::IndexDefinition& left,
                            const format::IndexDefinition& right);

// Numbers, offsets and flags of the columns, trees and named indexes; pages and maps stay unset.
//
// Errors: 3264 no fields, 3190 too many fields, 3125 bad name, 3191 two fields of one name, 3259
//         type unknown to the version or a counter that is no long, 3271 a decimal of no or more
//         than 28 digits or with more behind the point than it has, 3017 size too long, 3018 an
//         index over an unknown field or none, 3283 two primary keys, 3284 two indexes of one name,
//         3001 too many indexes or an index over too many fields.
[[nodiscard]] format::TableDefinition DesignOf(const NewTable& table, const DatabaseText& text,
                                               const format::FileVersion& version);

// The property block of the wishes; empty when the fields have none that is stored.
// Errors: 3421 for a text that the code page cannot hold.
[[nodiscard]] std::vector<std::byte> PropertiesOf(const NewTable& table, std::uint16_t codePage);

}  // namespace jet::catalog
