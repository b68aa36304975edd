// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/index/IndexFixture.h"

#include "jet/format/DataPage.h"
#include "jet/format/TableDefinitionLayout.h"

namespace jet {

namespace {

constexpr std::uint32_t kNoOwner = 0;  // of a page of maps

std::uint32_t StatisticsAt(const format::FileVersion& version)
{
    return static_cast<std::uint32_t>(version.definition->table.statistics);
}

}  // namespace

IndexFixture::IndexFixture(std::vector<format::ColumnType> types, std::vector<bool> ascending,
                           Flags flags, const format::FileVersion& version)
{
    pager_ = pages::Pager::Create(files_, "index.mdb", version);
    format::IndexDefinition index;
    index.unique = flags.unique;
    index.ignoreNulls = flags.ignoreNulls;
    index.required = flags.required;
    index.statisticsOffset = StatisticsAt(version);
    for (std::size_t i = 0; i < types.size(); ++i) {
        format::ColumnDefinition column;
        column.type = types[i];
        column.sortOrder.version = version.sortVersion;
        column.codePage = version.codePage;
        column.number = static_cast<std::uint16_t>(i);
        table_.columns.push_back(column);
        index.columns.push_back({column.number, ascending[i]});
    }
    pages::WriteSet changes(*pager_);
    table_.page = changes.Allocate();
    format::WriteU16(changes.Change(table_.page), 0, 0x0102);
    const format::PageNumber maps = changes.Allocate();
    format::FormatDataPage(changes.Change(maps), kNoOwner);
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
    return format::ReadU32(pager_->Read(table_.page).Bytes(), StatisticsAt(pager_->Version()) + 4);
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
