// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/TableMaker.h"

#include "jet/format/DataPage.h"
#include "jet/format/TableDefinitionWriter.h"
#include "jet/format/ValueCodec.h"
#include "jet/index/Index.h"

namespace jet::catalog {

namespace {

constexpr std::size_t kSlot = 2;       // bytes of a row's place in its page's list of rows
constexpr std::uint32_t kNoOwner = 0;  // of a page of maps

}  // namespace

MapPages::MapPages(pages::WriteSet& changes) : changes_(changes)
{
    TakePage();
}

format::PageNumber MapPages::NewPage()
{
    const format::PageNumber page = changes_.Allocate();
    format::FormatDataPage(changes_.Change(page), kNoOwner);
    return page;
}

void MapPages::TakePage()
{
    page_ = NewPage();
    room_ = format::DataPage(changes_.Change(page_)).FreeBytes() /
            (changes_.Of().Version().mapRow + kSlot);
}

void MapPages::BeginTable()
{
    if (room_ == 0) TakePage();
}

std::vector<format::RowId> MapPages::Make(std::size_t count)
{
    std::vector<format::RowId> maps;
    auto further = format::PageNumber::None;
    for (std::size_t i = 0; i < count; ++i) {
        if (room_ > 0)
            --room_;
        else if (further == format::PageNumber::None)
            further = NewPage();
        const bool fits = further == format::PageNumber::None;
        maps.push_back(pages::UsageMap::Make(changes_, fits ? page_ : further));
    }
    return maps;
}

void MakeMapsAndRoots(pages::WriteSet& changes, MapPages& maps, format::TableDefinition& table)
{
    maps.BeginTable();
    const auto makePair = [&maps](auto& owned, auto& free) {
        const std::vector<format::RowId> made = maps.Make(2);
        owned = made[0];
        free = made[1];
    };
    makePair(table.ownedPages, table.freePages);
    std::vector<format::ColumnDefinition*> byNumber(table.columns.size());
    for (format::ColumnDefinition& column : table.columns)
        byNumber[column.number] = &column;
    for (format::ColumnDefinition* column : byNumber)
        if (format::IsLongValue(column->type)) makePair(column->ownedPages, column->freePages);
    for (format::IndexDefinition& index : table.indexes) {
        index.usageMap = maps.Make(1)[0];
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
