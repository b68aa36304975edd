// SPDX-License-Identifier: Apache-2.0
// IndexKey: the bytes by which an index orders the values of its columns.
#pragma once

#include "base/Value.h"
#include "jet/format/TableDefinition.h"

#include <cstddef>
#include <vector>

namespace jet::format {

// Appends what one column adds to a key: a flag that tells null from value and ascending from
// descending, then the value so that plain byte order is value order.
//
// Requires: `value` is null or of the column's own type.
// Rule:     a boolean is never null: null counts as false. Of a text the first 255 characters
//           count.
// Errors:   3421 (Data type conversion error) for a value of another type and for a text with a
//           character that the column's sort order does not know; 3251 (Operation is not supported
//           for this type of object) for a type or a sort order that cannot be keyed.
// Source:   docs/format/sort-key.md
void AppendKeyColumn(std::vector<std::byte>& key, const base::Value& value,
                     const ColumnDefinition& column, bool ascending);

}  // namespace jet::format
