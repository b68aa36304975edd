// SPDX-License-Identifier: Apache-2.0
// IndexCheck: one index, its tree of pages and the match between its entries and the rows.
#pragma once

#include "jet/check/ExpectedEntries.h"
#include "jet/check/TableCheck.h"

namespace jet::check {

// `index` is its place in the table's definition; `expected` knows all rows of `facts`.
void CheckIndex(Inspection& inspection, const TableFacts& facts, std::size_t index,
                const ExpectedEntries& expected);

}  // namespace jet::check
