// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/RelationshipMaker.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/Relationships.h"
#include "jet/catalog/TableDesign.h"
#include "jet/catalog/TableRedesign.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/TableDefinitionReader.h"
#include "jet/format/TableDefinitionWriter.h"
#include "jet/table/RowChanges.h"
#include "jet/table/TableCursor.h"

#include <algorithm>

namespace jet::catalog {

namespace {

using base::NumberedError;
using format::IndexDefinition;
using format::NamedIndex;
using format::PageNumber;
using format::TableDefinition;

const format::ColumnDefinition& ColumnNamed(const TableDefinition& table, const std::string& name)
{
    const auto place = table.FindColumn(name);
    if (!place) throw NumberedError(3018);
    return table.columns[*place];
}

// The pairs in the order of this index; nothing when it is over other columns.
std::optional<std::vector<NewRelationship::Pair>> PairsInOrder(const NewRelationship& wish,
                                                               const IndexDefinition& index,
                                                               const TableDefinition& referenced)
{
    if (index.columns.size() != wish.columns.size()) return std::nullopt;
    std::vector<NewRelationship::Pair> pairs;
    for (const format::IndexColumn& column : index.columns) {
        const auto pair =
            std::find_if(wish.columns.begin(), wish.columns.end(), [&](const auto& one) {
                return ColumnNamed(referenced, one.referenced).number == column.columnNumber;
            });
        if (pair == wish.columns.end()) return std::nullopt;
        pairs.push_back(*pair);
    }
    return pairs;
}

// The unique tree over the referenced columns, in whose order the pairs then stand.
std::uint32_t UniqueTree(NewRelationship& wish, const TableDefinition& referenced)
{
    for (std::size_t tree = 0; tree < referenced.indexes.size(); ++tree) {
        if (!referenced.indexes[tree].unique) continue;
        auto pairs = PairsInOrder(wish, referenced.indexes[tree], referenced);
        if (!pairs) continue;
        wish.columns = std::move(*pairs);
        return static_cast<std::uint32_t>(tree);
    }
    throw NumberedError(3015);
}

void RequireSameTypes(const NewRelationship& wish, const TableDefinition& referenced,
                      const TableDefinition& referencing)
{
    for (const NewRelationship::Pair& pair : wish.columns)
        if (ColumnNamed(referenced, pair.referenced).type !=
            ColumnNamed(referencing, pair.referencing).type)
            throw NumberedError(3615);
}

// A plain tree over the referencing columns.
IndexDefinition TreeFor(const NewRelationship& wish, const TableDefinition& referencing,
                        std::uint8_t flags)
{
    IndexDefinition tree;
    tree.flags = flags;
    for (const NewRelationship::Pair& pair : wish.columns)
        tree.columns.push_back({ColumnNamed(referencing, pair.referencing).number, true});
    return tree;
}

// One side's index; the other side's place is filled in by the caller.
NamedIndex SideOf(const NewRelationship& wish, std::uint8_t side, std::uint32_t number)
{
    NamedIndex index;
    index.kind = format::kRelationship;
    index.relationKind = side;
    index.number = number;
    index.cascadeUpdates =
        (wish.flags & kCascadeUpdates) != 0 ? format::kCascade : format::kRestrict;
    index.cascadeDeletes = (wish.flags & kCascadeDeletes) != 0    ? format::kCascade
                           : (wish.flags & kSetNullOnDelete) != 0 ? format::kSetNull
                                                                  : format::kRestrict;
    return index;
}

// The lowest number from `from` on that no index of the table has.
std::uint32_t FreeIndexNumber(const TableDefinition& table, std::uint32_t from)
{
    const auto taken = [&](std::uint32_t number) {
        return std::any_of(table.namedIndexes.begin(), table.namedIndexes.end(),
                           [number](const NamedIndex& index) { return index.number == number; });
    };
    while (taken(from))
        ++from;
    return from;
}

// A tree with the table it belongs to.
struct TableTree {
    std::shared_ptr<const TableDefinition> table;
    std::uint32_t tree = 0;

    TableTree(const pages::Pager& pager, PageNumber page, std::uint32_t number)
        : table(std::make_shared<TableDefinition>(table::LoadDefinition(pager, page))), tree(number)
    {
    }
    [[nodiscard]] const IndexDefinition& Definition() const { return table->indexes[tree]; }
    [[nodiscard]] index::Index Of(pages::Pager& pager) const
    {
        return {pager, *table, Definition()};
    }
};

// What every row of the table has in the columns of the tree.
template <class Visit>
void ForEachRow(pages::Pager& pager, const TableTree& tree, Visit visit)
{
    const std::vector<std::size_t> columns = ColumnsOf(*tree.table, tree.Definition());
    table::TableCursor rows(pager, tree.table);
    while (rows.Next()) {
        std::vector<base::Value> values;
        for (const std::size_t column : columns)
            values.push_back(table::ReadColumn(pager, rows.Row(), column));
        visit(values, rows.Id());
    }
}

// Enters the rows that are there, and notes how many.
void Fill(pages::WriteSet& changes, const TableTree& tree)
{
    index::Index entries = tree.Of(changes.Of());
    std::uint32_t count = 0;
    ForEachRow(changes.Of(), tree, [&](const auto& values, format::RowId row) {
        entries.Insert(changes, entries.KeyOf(values), row);
        ++count;
    });
    format::WriteU32(changes.Change(tree.table->page), tree.Definition().statisticsOffset, count);
}

// Errors: 3201.
void RequireReferences(pages::Pager& pager, const TableTree& referencing,
                       const TableTree& referenced, const std::string& name)
{
    const index::Index keys = referenced.Of(pager);
    ForEachRow(pager, referencing, [&](const auto& values, format::RowId) {
        const index::RowKey key = keys.KeyOf(values);
        if (!key.anyNull && keys.Rows(key.bytes).empty()) throw NumberedError(3201, {name});
    });
}

}  // namespace

void MakeRelationIndexes(pages::WriteSet& changes, NewRelationship& wish, PageNumber referenced,
                         PageNumber referencing, format::SortOrder order)
{
    pages::Pager& pager = changes.Of();
    const TableDefinition one = table::LoadDefinition(pager, referenced);
    const TableDefinition many = table::LoadDefinition(pager, referencing);
    const std::uint32_t unique = UniqueTree(wish, one);
    RequireSameTypes(wish, one, many);

    // Another index over the same columns serves the relationship too.
    const IndexDefinition wanted = TreeFor(wish, many, pager.Version().indexAlways);
    const auto shared =
        std::find_if(many.indexes.begin(), many.indexes.end(),
                     [&](const IndexDefinition& known) { return SameTree(known, wanted); });
    const bool isNew = shared == many.indexes.end();

    NamedIndex own = SideOf(wish, format::kReferencedSide, FreeIndexNumber(one, 0));
    const std::uint32_t from = referenced == referencing ? own.number + 1 : 0;
    NamedIndex others = SideOf(wish, format::kReferencingSide, FreeIndexNumber(many, from));
    own.name = std::string(".r") + static_cast<char>('A' + own.number);
    own.tree = unique;
    own.relatedIndex = others.number;
    own.relatedTable = referencing;
    others.name = wish.name;
    others.relatedIndex = own.number;
    others.relatedTable = referenced;

    TableRedesign design(changes, referencing);
    others.tree =
        isNew ? design.Add(wanted) : static_cast<std::uint32_t>(shared - many.indexes.begin());
    design.Add(others, order);
    if (referenced == referencing) design.Add(own, order);
    design.Write();
    if (referenced != referencing) {
        TableRedesign other(changes, referenced);
        other.Add(own, order);
        other.Write();
    }
    const TableTree made(pager, referencing, others.tree);
    if (isNew) Fill(changes, made);
    RequireReferences(pager, made, TableTree(pager, referenced, unique), wish.referenced);
}

bool RemoveRelationIndexes(pages::WriteSet& changes, const std::string& name,
                           PageNumber referencing)
{
    const TableDefinition many = table::LoadDefinition(changes.Of(), referencing);
    const auto side =
        std::find_if(many.namedIndexes.begin(), many.namedIndexes.end(), [&](const auto& index) {
            return index.kind == format::kRelationship &&
                   index.relationKind == format::kReferencingSide &&
                   base::SameName(index.name, name);
        });
    if (side == many.namedIndexes.end()) return false;
    TableRedesign design(changes, referencing);
    design.Remove(side->number);
    if (side->relatedTable == referencing) design.Remove(side->relatedIndex);
    design.Write();
    if (side->relatedTable == referencing) return true;
    TableRedesign other(changes, side->relatedTable);
    other.Remove(side->relatedIndex);
    other.Write();
    return true;
}

}  // namespace jet::catalog
