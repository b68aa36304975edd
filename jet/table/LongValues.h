// SPDX-License-Identifier: Apache-2.0
// LongValues: memo and OLE values, in their row or on pages of their column.
#pragma once

#include "jet/format/LongValueHeader.h"
#include "jet/format/TableDefinition.h"
#include "jet/table/RowPages.h"

#include <vector>

namespace jet::table {

// The stored bytes of a long value, whatever its form; `field` is what the row holds.
// Errors: 3343 when the value is cut, deleted or goes in a circle.
// Source: docs/format/long-value.md
[[nodiscard]] std::vector<std::byte> ReadLongValue(const pages::Pager& pager, format::Span field);

// The field of a value that stays in its row.
[[nodiscard]] std::vector<std::byte> LongValueInRow(format::Span value);

// Stores and frees the values of one column that lie outside their rows.
// Requires: changes and column outlive it.
class LongValueStore {
public:
    // Errors: 3251 for a column of the office suite's own, which keeps its values in its own way.
    LongValueStore(pages::WriteSet& changes, const format::ColumnDefinition& column);

    // Stores a value and answers the field for its row.
    [[nodiscard]] std::vector<std::byte> Store(format::Span value);
    // Frees what `field` refers to; nothing when the value lies in the row. Errors: 3343.
    void Free(format::Span field);

private:
    [[nodiscard]] RowId StoreChain(format::Span value);

    pages::WriteSet& changes_;
    const format::LongValueLimits& limits_;
    RowPages rows_;
};

}  // namespace jet::table
