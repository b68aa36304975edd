// SPDX-License-Identifier: Apache-2.0
// RowChanges: inserts, updates and deletes rows of one table inside a write set.
#pragma once

#include "jet/table/RowPages.h"
#include "jet/table/RowRules.h"
#include "jet/table/RowSource.h"
#include "jet/table/StoredRows.h"

#include <span>

namespace jet::table {

// A column's value; long values are read whole. Errors: 3343.
[[nodiscard]] base::Value ReadColumn(const pages::Pager& pager, const format::RowView& row,
                                     std::size_t column);

// Requires: changes, table and rules outlive it.
// Rule:     each call makes all its checks before the first change, but those of
//           relationships, which come last.
// Errors:   those of RowSource::Insert, and of the rules.
class RowChanges {
public:
    // No rules: null.
    RowChanges(pages::WriteSet& changes, const format::TableDefinition& table,
               const RowRules* rules);

    RowId Insert(std::span<const Assignment> values);
    void Update(RowId row, std::span<const Assignment> values);
    void Delete(RowId row);

private:
    [[nodiscard]] FoundRow Existing(RowId row) const;
    void Rewrite(RowId row, format::Span bytes);
    void RewriteMoved(RowId row, RowId moved, format::Span bytes);
    void FreeLongValue(const format::RowView& row, std::size_t column);
    void CheckRules(bool isNew, std::span<const Assignment> values,
                    const ColumnReader& valueOf) const;
    [[nodiscard]] std::optional<ColumnValues> RelatedValues(const ColumnReader& valueOf) const;
    void Follow(ChangedRow row);
    void RaiseCounter(std::span<const Assignment> values);

    pages::WriteSet& changes_;
    pages::Pager& pager_;
    const format::TableDefinition& table_;
    const RowRules* rules_;
    RowPages rows_;
};

}  // namespace jet::table
