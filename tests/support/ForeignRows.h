// SPDX-License-Identifier: Apache-2.0
// ForeignRows: a table row by row as the command mdb-json, an independent reader, finds it.
#pragma once

#include "jet/table/RowSource.h"

#include <string>
#include <vector>

namespace tests {

// Where what we read of a table differs from what the other reader finds in `file`, by row and
// column; the first few. Looked at are the number of rows, in any order, and of each every boolean,
// whole number and text.
// Rule: a text of a code page but 1252 is left out, which the other reader does not know; a failing
//       command throws std::runtime_error.
[[nodiscard]] std::vector<std::string> DifferencesFrom(const std::string& file,
                                                       const std::string& name,
                                                       const jet::table::RowSource& table);

}  // namespace tests
