// SPDX-License-Identifier: Apache-2.0
// StoreValue: a value made fit for the column it is assigned to, and what a new row begins with.
#pragma once

#include "jet/sql/Session.h"

#include <vector>

namespace jet::sql {

// The value as the column's own type.
//
// Units:  `bytesPerCharacter` of the file's texts: 2, in Jet 3 files 1.
// Rule:   integers round half to even. Text becomes a number or a date as the platform reads it;
//         the empty text is neither.
// Errors: 3421 unsuitable value, 3163 text too long, 3162 null for a boolean.
[[nodiscard]] base::Value ForColumn(const base::Value& value,
                                    const format::ColumnDefinition& column,
                                    std::size_t bytesPerCharacter);

// The values with which a new row begins, one per column: the defaults worked out, booleans false,
// everything else null. Counters are not drawn.
// Errors: 3355, 3344 and 3388 for a default that cannot be worked out, 3421 one that does not suit.
[[nodiscard]] std::vector<base::Value> NewRowValues(const catalog::OpenTable& table,
                                                    const Session& session);

// The next value of a counter column.
// Rule: a counter whose default value is GenUniqueID() takes any number that no row has, as far as
//       an index tells, and keeps no count; others count up and the number is used up at once.
[[nodiscard]] base::Value NextCounter(catalog::OpenTable& table, std::size_t column);

}  // namespace jet::sql
