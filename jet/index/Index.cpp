// SPDX-License-Identifier: Apache-2.0
#include "jet/index/Index.h"

#include "base/NumberedError.h"
#include "jet/format/IndexKey.h"
#include "jet/index/Tree.h"

#include <algorithm>

namespace jet::index {

namespace {

// Where an index's entry counts keep the number of distinct keys.
constexpr std::size_t kDistinctKeys = 4;

const format::ColumnDefinition& ColumnOf(const format::TableDefinition& table, std::uint16_t number)
{
    const auto found =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [number](const auto& column) { return column.number == number; });
    if (found == table.columns.end()) throw base::NumberedError(3343).At("index without column");
    return *found;
}

bool BeginsWith(format::Span key, const Key& prefix)
{
    return key.size() >= prefix.size() && format::SameBytes(key.first(prefix.size()), prefix);
}

}  // namespace

Index::Index(pages::Pager& pager, const format::TableDefinition& table,
             const format::IndexDefinition& definition)
    : pager_(pager), table_(table), definition_(definition)
{
}

RowKey Index::KeyOf(std::span<const base::Value> values) const
{
    RowKey key;
    key.allNull = true;
    const std::size_t count = std::min(values.size(), definition_.columns.size());
    for (std::size_t i = 0; i < count; ++i) {
        const format::IndexColumn& place = definition_.columns[i];
        const format::ColumnDefinition& column = ColumnOf(table_, place.columnNumber);
        format::AppendKeyColumn(key.bytes, values[i], column, place.ascending);
        const bool null = values[i].IsNull() && column.type != format::ColumnType::Boolean;
        key.anyNull = key.anyNull || null;
        key.allNull = key.allNull && null;
    }
    return key;
}

void Index::CheckStorable(const RowKey& key, const RowId* self) const
{
    if (definition_.required && key.anyNull) throw base::NumberedError(3058);
    const format::IndexPageLayout& layout = format::IndexPageLayoutOf(pager_.Version());
    if (key.bytes.size() + format::kRowPlaceWidth > layout.LongestEntry())
        throw base::NumberedError(3047).At("index key too long");
    if (!definition_.unique || key.anyNull) return;
    Cursor cursor = Walk();
    bool more = cursor.Seek(format::MakeEntry(key.bytes, {}));
    for (; more; more = cursor.Next()) {
        if (!format::SameBytes(cursor.Key(), key.bytes)) return;
        if (self == nullptr || cursor.Row() != *self) throw base::NumberedError(3022);
    }
}

TreePlace Index::Place() const
{
    return {table_.page, definition_.root, definition_.usageMap};
}

void Index::Insert(pages::WriteSet& changes, const RowKey& key, RowId row)
{
    if (LeftOut(key)) return;
    const TreePlace place = Place();
    TreePages pages(pager_, changes, place);
    const bool isNew = Tree(pages, pager_, place.root).Insert(format::MakeEntry(key.bytes, row));
    if (isNew) CountNewKey(changes);
}

void Index::Erase(pages::WriteSet& changes, const RowKey& key, RowId row)
{
    if (LeftOut(key)) return;
    const TreePlace place = Place();
    TreePages pages(pager_, changes, place);
    Tree(pages, pager_, place.root).Erase(format::MakeEntry(key.bytes, row));
}

// The counts stand in front of everything of varying length, so always on the first page.
void Index::CountNewKey(pages::WriteSet& changes) const
{
    const format::MutableSpan page = changes.Change(table_.page);
    const std::size_t at = definition_.statisticsOffset + kDistinctKeys;
    format::WriteU32(page, at, format::ReadU32(page, at) + 1);
}

std::vector<RowId> Index::Rows(const Key& prefix) const
{
    std::vector<RowId> rows;
    Cursor cursor = Walk();
    bool more = cursor.Seek(format::MakeEntry(prefix, {}));
    for (; more && BeginsWith(cursor.Key(), prefix); more = cursor.Next())
        rows.push_back(cursor.Row());
    return rows;
}

PageNumber Index::MakeRoot(pages::WriteSet& changes, PageNumber table, RowId usageMap)
{
    const PageNumber root = changes.Allocate();
    pages::UsageMap(changes.Of(), usageMap).Add(changes, root);
    format::IndexPageContent empty;
    empty.owner = table;
    format::WriteIndexPage(changes.Change(root), empty,
                           format::IndexPageLayoutOf(changes.Of().Version()));
    return root;
}

}  // namespace jet::index
