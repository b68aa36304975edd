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

// Fills the pages of a chain, which grows as far as needed.
void WriteChain(pages::WriteSet& changes, const format::TableDefinitionWriter& writer,
                std::vector<format::PageNumber>& chain)
{
    while (chain.size() < writer.PageCount())
        chain.push_back(changes.Allocate());
    for (std::size_t place = 0; place < chain.size(); ++place) {
        const bool last = place + 1 == chain.size();
        writer.WritePage(place, last ? format::PageNumber::None : chain[place + 1],
                         changes.Change(chain[place]));
    }
}

}  // namespace

MapPages::MapPages(pages::WriteSet& changes) : changes_(changes)
{
    TakePage();
}

MapPages::MapPages(pages::WriteSet& changes, format::PageNumber page)
    : changes_(changes), page_(page)
{
    Measure();
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
    Measure();
}

void MapPages::Measure()
{
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
    WriteChain(changes, writer, table.pages);
}

void RewriteDefinition(pages::WriteSet& changes, table::JoinedDefinition definition)
{
    const format::TableDefinitionWriter writer(std::move(definition.bytes), changes.Of().Version());
    for (; definition.pages.size() > writer.PageCount(); definition.pages.pop_back())
        changes.Free(definition.pages.back());
    WriteChain(changes, writer, definition.pages);
}

}  // namespace jet::catalog
