// SPDX-License-Identifier: Apache-2.0
// QueryRows: the rows of a query, as ids or as values.
#pragma once

#include "jet/sql/Query.h"

#include <vector>

namespace jet::sql {

using ValueRow = std::vector<base::Value>;

// The rows' ids in the order asked for: nulls first, and last when descending; rows that compare
// equal keep the table's order. TOP keeps those equal to its last row too.
// Requires: query.GivesTableRows().
[[nodiscard]] std::vector<table::RowId> RowIdsOf(const Query& query);

// The rows' values, worked out now; groups and aggregates, DISTINCT and TOP included.
// Errors: 3093 a sort key that DISTINCT does not give out.
[[nodiscard]] std::vector<ValueRow> RowsOf(const Query& query);

}  // namespace jet::sql
