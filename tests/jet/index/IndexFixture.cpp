// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/index/IndexFixture.h"

namespace jet {

namespace {

constexpr std::uint32_t kStatistics = 63;

// An empty page for maps of pages.
void FormatMapPage(format::MutableSpan page)
{
    format::WriteU16(page, 0, 0x0101);
    format::WriteU16(page, 2, 4096 - 14);
}

}  // namespace

IndexFixture::IndexFixture(std::vector<format::ColumnType> types, std::vector<bool> ascending,
                           Flags flags)
{
    pager_ = pages::Pager::Create(files_, "index.mdb", format::kJet4);
    format::IndexDefinition index;
    index.unique = flags.unique;
    index.ignoreNulls = flags.ignoreNulls;
    index.required = flags.required;
    index.statisticsOffset = kStatistics;
    for (std::size_t i = 0; i < types.size(); ++i) {
        format::ColumnDefinition column;
        column.type = types[i];
        column.number = static_cast<std::uint16_t>(i);
        table_.columns.push_back(column);
        index.columns.push_back({column.number, ascending[i]});
    }
    pages::WriteSet changes(*pager_);
    table_.page = changes.Allocate();
    format::WriteU16(changes.Change(table_.page), 0, 0x0102);
    const format::PageNumber maps = changes.Allocate();
    FormatMapPage(changes.Change(maps));
    index.usageMap = pages::UsageMap::Make(changes, maps);
    index.root = index::Index::MakeRoot(changes, table_.page, index.usageMap);
    changes.Commit();
    table_.indexes.push_back(index);
}

TreeReport IndexFixture::Check()
{
    return CheckTree(*pager_, table_.page, table_.indexes.front());
}

std::uint32_t IndexFixture::DistinctKeys() const
{
    return format::ReadU32(pager_->Read(table_.page).Bytes(), kStatistics + 4);
}

void IndexFixture::Insert(const index::RowKey& key, format::RowId row)
{
    pages::WriteSet changes(*pager_);
    Of().Insert(changes, key, row);
    changes.Commit();
}

void IndexFixture::Erase(const index::RowKey& key, format::RowId row)
{
    pages::WriteSet changes(*pager_);
    Of().Erase(changes, key, row);
    changes.Commit();
}

std::vector<format::RowId> IndexFixture::RowsInOrder()
{
    std::vector<format::RowId> rows;
    index::Cursor cursor = Of().Walk();
    for (bool more = cursor.First(); more; more = cursor.Next())
        rows.push_back(cursor.Row());
    return rows;
}

}  // namespace jet
