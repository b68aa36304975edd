// SPDX-License-Identifier: Apache-2.0
// MapPlacesTest: where the usage maps of a new table stand, beside those of a real one.
#include "jet/catalog/Catalog.h"
#include "jet/format/ValueCodec.h"
#include "jet/io/MemoryFile.h"
#include "jet/io/StdFile.h"
#include "tests/support/Samples.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using jet::catalog::Catalog;
using jet::catalog::NewColumn;
using jet::catalog::NewTable;
using jet::format::ColumnDefinition;
using jet::format::ColumnType;
using jet::format::RowId;
using jet::format::TableDefinition;

// Pages are counted from 0 as they come.
struct Place {
    std::size_t page;
    std::uint16_t slot;
    friend bool operator==(const Place&, const Place&) = default;
};

void PrintTo(const Place& place, std::ostream* out)
{
    *out << place.page << ":" << place.slot;
}

// Of the table, then of its memos and pictures by number, then of its indexes.
std::vector<Place> PlacesIn(const TableDefinition& table)
{
    std::vector<RowId> maps{table.ownedPages, table.freePages};
    std::vector<ColumnDefinition> columns = table.columns;
    std::sort(columns.begin(), columns.end(),
              [](const auto& left, const auto& right) { return left.number < right.number; });
    for (const ColumnDefinition& column : columns) {
        if (!jet::format::IsLongValue(column.type)) continue;
        maps.push_back(column.ownedPages.value());
        maps.push_back(column.freePages.value());
    }
    for (const auto& index : table.indexes)
        maps.push_back(index.usageMap);

    std::vector<Place> places;
    std::vector<jet::format::PageNumber> pages;
    for (const RowId& map : maps) {
        auto known = std::find(pages.begin(), pages.end(), map.page);
        if (known == pages.end()) known = pages.insert(pages.end(), map.page);
        places.push_back({static_cast<std::size_t>(known - pages.begin()), map.slot});
    }
    return places;
}

// A table with as many memos, and two indexes.
NewTable WithMemos(int count)
{
    NewTable table;
    table.name = "Projects";
    NewColumn number;
    number.name = "ID";
    number.type = ColumnType::Long;
    table.columns = {number};
    for (int i = 0; i < count; ++i) {
        NewColumn memo;
        memo.name = "Note" + std::to_string(i);
        memo.type = ColumnType::Memo;
        table.columns.push_back(memo);
    }
    table.indexes = {{.name = "Up", .columns = {{.column = "ID"}}, .unique = true},
                     {.name = "Down", .columns = {{.column = "ID", .ascending = false}}}};
    return table;
}

std::vector<Place> PlacesOfNew(const jet::format::FileVersion& version, int memos)
{
    jet::io::MemoryFileSystem files;
    Catalog::CreateDatabase(files, "new.mdb", version);
    Catalog catalog(jet::pages::Pager::Open(files, "new.mdb", jet::io::OpenMode::ReadWrite));
    catalog.Create(WithMemos(memos), {38061.375});
    return PlacesIn(catalog.Open("Projects").rows->Definition());
}

TEST(MapPlacesTest, TableOfTenMemosHasItsMapsWhereARealOneHasThem)
{
    const std::filesystem::path sample = tests::SampleFolder() / "mdb" / "test2V1997.mdb";
    SKIP_WITHOUT_SAMPLE(sample);
    jet::io::StdFileSystem disk;
    const Catalog catalog(
        jet::pages::Pager::Open(disk, sample.string(), jet::io::OpenMode::ReadOnly));
    const std::vector<Place> real = PlacesIn(catalog.Open("MSP_PROJECTS").rows->Definition());
    ASSERT_EQ(real.size(), 24U);
    EXPECT_EQ(PlacesOfNew(jet::format::kJet3, 10), real);
}

TEST(MapPlacesTest, PairThatMeetsTheEndOfThePageIsParted)
{
    const std::vector<Place> places = PlacesOfNew(jet::format::kJet3, 8);
    ASSERT_EQ(places.size(), 20U);
    EXPECT_EQ(places[13], (Place{0, 13}));
    EXPECT_EQ(places[14], (Place{0, 14}));
    EXPECT_EQ(places[15], (Place{1, 0}));
    EXPECT_EQ(places[16], (Place{2, 0}));
    EXPECT_EQ(places[17], (Place{2, 1}));
    EXPECT_EQ(places[18], (Place{3, 0}));
    EXPECT_EQ(places[19], (Place{4, 0}));
}

TEST(MapPlacesTest, WhatFitsStandsOnOnePage)
{
    for (const auto* version : {&jet::format::kJet3, &jet::format::kJet4}) {
        const std::vector<Place> places = PlacesOfNew(*version, 5);
        for (std::size_t i = 0; i < places.size(); ++i)
            EXPECT_EQ(places[i], (Place{0, static_cast<std::uint16_t>(i)}));
    }
}

}  // namespace
