// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/TableMaker.h"

#include "jet/format/DataPage.h"
#include "jet/format/TableDefinitionWriter.h"
#include "jet/index/Index.h"

namespace jet::catalog {

namespace {

// Bytes of a new map row and of its place in the page's list of rows.
constexpr std::size_t kMapRow = 69, kSlot = 2;
constexpr std::uint32_t kNoOwner = 0;  // of a page of maps

}  // namespace

MapPages::MapPages(pages::WriteSet& changes) : changes_(changes)
{
    TakePage();
}

void MapPages::TakePage()
{
    page_ = changes_.Allocate();
    const format::MutableSpan page = changes_.Change(page_);
    format::FormatDataPage(page, kNoOwner);
    room_ = format::DataPage(page).FreeBytes() / (kMapRow + kSlot);
}

format::RowId MapPages::Make(std::size_t together)
{
    if (room_ < together) TakePage();
    --room_;
    return pages::UsageMap::Make(changes_, page_);
}

void MakeMapsAndRoots(pages::WriteSet& changes, MapPages& maps, format::TableDefinition& table)
{
    table.ownedPages = maps.Make(2);
    table.freePages = maps.Make();
    std::vector<format::ColumnDefinition*> byNumber(table.columns.size());
    for (format::ColumnDefinition& column : table.columns)
        byNumber[column.number] = &column;
    for (format::ColumnDefinition* column : byNumber) {
        if (column->type != format::ColumnType::Memo && column->type != format::ColumnType::Ole)
            continue;
        column->ownedPages = maps.Make(2);
        column->freePages = maps.Make();
    }
    for (format::IndexDefinition& index : table.indexes) {
        index.usageMap = maps.Make();
        index.root = index::Index::MakeRoot(changes, table.page, index.usageMap);
    }
}

void WriteDefinition(pages::WriteSet& changes, format::TableDefinition& table)
{
    const format::TableDefinitionWriter writer(table, changes.Of().Version());
    table.pages = {table.page};
    while (table.pages.size() < writer.PageCount())
        table.pages.push_back(changes.Allocate());
    for (std::size_t place = 0; place < table.pages.size(); ++place) {
        const bool last = place + 1 == table.pages.size();
        writer.WritePage(place, last ? format::PageNumber::None : table.pages[place + 1],
                         changes.Change(table.pages[place]));
    }
}

}  // namespace jet::catalog
