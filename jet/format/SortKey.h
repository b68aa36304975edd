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
// Errors: the number for text that holds a character the tables of `order` do not know.
[[nodiscard]] std::vector<std::byte> SortKeyOf(std::string_view text, SortOrder order);

// Compares two texts as their sort keys would, case and trailing blanks ignored.
// Rule: keys are made only when the plain bytes differ; a text that cannot be keyed compares by its
//       UTF-16 units, so that a comparison never fails.
[[nodiscard]] std::weak_ordering CompareText(std::string_view left, std::string_view right,
                                             SortOrder order);

}  // namespace jet::format
