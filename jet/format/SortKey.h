// SPDX-License-Identifier: Apache-2.0
// SortKey: the bytes by which Jet orders one text, in indexes, comparisons and ORDER BY alike.
#pragma once

#include "jet/format/TableDefinition.h"

#include <compare>
#include <cstddef>
#include <string_view>
#include <vector>

namespace jet::format {

// The sort key of a UTF-8 text, as an ascending index column stores it, without its null flag.
// Rule:   the whole text counts; an index cuts it to 255 characters before.
// Errors: 3421 (Data type conversion error) for text that holds a character the tables of `order`
//         do not know, 3251 for an order without tables.
// Source: docs/format/sort-key.md
[[nodiscard]] std::vector<std::byte> SortKeyOf(std::string_view text, SortOrder order);

// Compares two texts as their sort keys would: case and trailing blanks are ignored.
// Rule: never fails. A character that the tables do not know sorts behind all that they know, by
//       its UTF-16 unit (in Jet 3 as the question mark it would be stored as); an order without
//       tables compares as "General" does.
[[nodiscard]] std::weak_ordering CompareText(std::string_view left, std::string_view right,
                                             SortOrder order);

}  // namespace jet::format
