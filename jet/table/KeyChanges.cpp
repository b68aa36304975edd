// SPDX-License-Identifier: Apache-2.0
#include "jet/table/KeyChanges.h"

#include "base/NumberedError.h"

namespace jet::table {

namespace {

using Values = std::vector<base::Value>;

// What the index is over; nothing for a row that is not there.
std::optional<Values> ValuesOf(const format::IndexDefinition& definition,
                               const format::TableDefinition& table, const ColumnReader& valueOf)
{
    if (!valueOf) return std::nullopt;
    Values values;
    for (const format::IndexColumn& column : definition.columns) {
        const std::optional<std::size_t> place = table.FindNumber(column.columnNumber);
        if (!place) throw base::NumberedError(3343).At("index without column");
        values.push_back(valueOf(*place));
    }
    return values;
}

std::optional<index::RowKey> KeyOf(const index::Index& tree, const std::optional<Values>& values)
{
    if (!values) return std::nullopt;
    return tree.KeyOf(*values);
}

}  // namespace

KeyChanges::KeyChanges(pages::Pager& pager, const format::TableDefinition& table,
                       const ColumnReader& before, const ColumnReader& after)
{
    for (const format::IndexDefinition& definition : table.indexes) {
        const std::optional<Values> old = ValuesOf(definition, table, before);
        const std::optional<Values> wanted = ValuesOf(definition, table, after);
        // An order that cannot be keyed hinders no change beside it.
        if (old == wanted) continue;
        const index::Index tree(pager, table, definition);
        Change change{tree, KeyOf(tree, old), KeyOf(tree, wanted)};
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
