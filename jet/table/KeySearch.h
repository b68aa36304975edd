// SPDX-License-Identifier: Apache-2.0
// KeySearch: rows found through an index instead of a scan.
#pragma once

#include "jet/pages/Pager.h"
#include "jet/table/RowSource.h"

namespace jet::table {

// Ids of the rows whose columns equal `keys`, in storage order; nothing when no index begins with
// just those columns, or a value cannot be keyed.
// Rule:   equality is that of the index: text compares without regard to case and trailing blanks.
// Errors: 3343/3049 for a damaged index.
[[nodiscard]] std::optional<std::vector<RowId>> RowsWithKey(pages::Pager& pager,
                                                            const format::TableDefinition& table,
                                                            std::span<const Assignment> keys);

}  // namespace jet::table
