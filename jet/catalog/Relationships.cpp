// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/Relationships.h"

#include "base/Nesting.h"
#include "base/NumberedError.h"
#include "jet/format/TableDefinitionLayout.h"

#include <algorithm>

namespace jet::catalog {

namespace {

using base::NumberedError;
using base::Value;
using format::NamedIndex;
using table::Assignment;
using table::ColumnValues;

constexpr std::size_t kDepthLimit = 300;  // cascades through one table, each from the one before

using Key = std::vector<Value>;

Key KeyIn(const ColumnValues& values, const std::vector<std::size_t>& columns)
{
    Key key;
    for (const std::size_t column : columns)
        key.push_back(values.at(column));
    return key;
}

bool HasNull(const Key& key)
{
    return std::any_of(key.begin(), key.end(), [](const Value& value) { return value.IsNull(); });
}

}  // namespace

// The table on the other side of a relationship and its index there.
struct Relationships::Side {
    std::shared_ptr<OpenTable> table;
    std::shared_ptr<const format::TableDefinition> definition;
    const format::IndexDefinition* tree = nullptr;

    // The rows with this key.
    [[nodiscard]] std::vector<table::RowId> Rows(pages::Pager& pager, const Key& key) const
    {
        const index::Index entries(pager, *definition, *tree);
        return entries.Rows(entries.KeyOf(key).bytes);
    }
    // Texts that differ in case alone are one key.
    [[nodiscard]] bool SameKey(pages::Pager& pager, const Key& one, const Key& other) const
    {
        const index::Index entries(pager, *definition, *tree);
        return entries.KeyOf(one).bytes == entries.KeyOf(other).bytes;
    }
};

std::vector<std::size_t> ColumnsOf(const format::TableDefinition& table,
                                   const format::IndexDefinition& index)
{
    std::vector<std::size_t> columns;
    for (const format::IndexColumn& column : index.columns) {
        const std::optional<std::size_t> place = table.FindNumber(column.columnNumber);
        if (!place) throw NumberedError(3343).At("index without column");
        columns.push_back(*place);
    }
    return columns;
}

Relationships::Relationships(const OpenTable& table, TableAt tableAt)
    : table_(table), tableAt_(std::move(tableAt))
{
}

void Relationships::Follow(pages::WriteSet& changes, const table::ChangedRow& row) const
{
    if (depth_ >= kDepthLimit) throw NumberedError(3035).At("cascades without end");
    const base::Nesting nesting(depth_);
    const auto table = table_.rows->CurrentDefinition();
    const format::TableDefinition& definition = *table;
    for (const NamedIndex& index : definition.namedIndexes) {
        if (index.kind != format::kRelationship) continue;
        const auto columns = ColumnsOf(definition, definition.indexes[index.tree]);
        std::optional<Key> before, after;
        if (row.before) before = KeyIn(*row.before, columns);
        if (row.after) after = KeyIn(*row.after, columns);
        if (before == after) continue;
        if (index.relationKind == format::kReferencingSide && after)
            RequireReferenced(changes, index, *after);
        if (index.relationKind == format::kReferencedSide && before)
            ChangeReferring(changes, index, *before, after ? &*after : nullptr);
    }
}

Relationships::Side Relationships::OtherSide(const NamedIndex& index) const
{
    Side side;
    side.table = tableAt_(index.relatedTable);
    if (!side.table) throw NumberedError(3343).At("relationship with a table that is not there");
    side.definition = side.table->rows->CurrentDefinition();
    const auto& indexes = side.definition->namedIndexes;
    const auto partner = std::find_if(indexes.begin(), indexes.end(), [&](const NamedIndex& one) {
        return one.kind == format::kRelationship && one.number == index.relatedIndex;
    });
    if (partner == indexes.end())
        throw NumberedError(3343).At("relationship without its other side");
    side.tree = &side.definition->indexes[partner->tree];
    const std::size_t columns = table_.rows->Definition().indexes[index.tree].columns.size();
    if (side.tree->columns.size() != columns)
        throw NumberedError(3343).At("sides of a relationship differ");
    return side;
}

void Relationships::RequireReferenced(pages::WriteSet& changes, const NamedIndex& index,
                                      const Key& key) const
{
    if (HasNull(key)) return;
    const Side referenced = OtherSide(index);
    if (referenced.Rows(changes.Of(), key).empty())
        throw NumberedError(3201, {referenced.table->entry.name});
}

void Relationships::ChangeReferring(pages::WriteSet& changes, const NamedIndex& index,
                                    const Key& former, const Key* present) const
{
    if (HasNull(former)) return;
    const Side referring = OtherSide(index);
    const std::vector<table::RowId> rows = referring.Rows(changes.Of(), former);
    if (rows.empty()) return;
    const std::uint8_t rule = present == nullptr ? index.cascadeDeletes : index.cascadeUpdates;
    if (present != nullptr && referring.SameKey(changes.Of(), former, *present)) return;
    if (rule != format::kCascade && rule != format::kSetNull)
        throw NumberedError(3200, {referring.table->entry.name});
    const auto columns = ColumnsOf(*referring.definition, *referring.tree);
    std::vector<Assignment> values;
    for (std::size_t i = 0; i < columns.size(); ++i)
        values.push_back({columns[i], present == nullptr ? Value() : (*present)[i]});
    for (const table::RowId row : rows) {
        // A cascade may come back to a row that another one has already changed or taken away.
        if (!referring.table->rows->Fetch(row)) continue;
        if (present == nullptr && rule == format::kCascade)
            referring.table->rows->Delete(changes, row);
        else
            referring.table->rows->Update(changes, row, values);
    }
}

}  // namespace jet::catalog
