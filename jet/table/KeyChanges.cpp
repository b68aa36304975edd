// SPDX-License-Identifier: Apache-2.0
#include "jet/table/KeyChanges.h"

#include "base/NumberedError.h"

namespace jet::table {

namespace {

std::optional<index::RowKey> KeyOf(const index::Index& tree,
                                   const format::IndexDefinition& definition,
                                   const format::TableDefinition& table,
                                   const ColumnReader& valueOf)
{
    if (!valueOf) return std::nullopt;
    std::vector<base::Value> values;
    for (const format::IndexColumn& column : definition.columns) {
        const std::optional<std::size_t> place = table.FindNumber(column.columnNumber);
        if (!place) throw base::NumberedError(3343).At("index without column");
        values.push_back(valueOf(*place));
    }
    return tree.KeyOf(values);
}

}  // namespace

KeyChanges::KeyChanges(pages::Pager& pager, const format::TableDefinition& table,
                       const ColumnReader& before, const ColumnReader& after)
{
    for (const format::IndexDefinition& definition : table.indexes) {
        const index::Index tree(pager, table, definition);
        Change change{tree, KeyOf(tree, definition, table, before),
                      KeyOf(tree, definition, table, after)};
        if (change.before && change.after && change.before->bytes == change.after->bytes) continue;
        changes_.push_back(std::move(change));
    }
}

void KeyChanges::Check(const RowId* self) const
{
    for (const Change& change : changes_)
        if (change.after) change.tree.CheckStorable(*change.after, self);
}

void KeyChanges::Apply(pages::WriteSet& changes, RowId row)
{
    for (Change& change : changes_) {
        if (change.before) change.tree.Erase(changes, *change.before, row);
        if (change.after) change.tree.Insert(changes, *change.after, row);
    }
}

}  // namespace jet::table
