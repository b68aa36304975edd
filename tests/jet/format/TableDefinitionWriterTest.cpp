// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TableDefinitionWriter.h"

#include "base/NumberedError.h"
#include "tests/support/Hex.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using jet::format::ColumnDefinition;
using jet::format::ColumnType;
using jet::format::kJet4;
using jet::format::PageNumber;
using jet::format::RowId;
using jet::format::TableDefinition;
using jet::format::TableDefinitionWriter;
using tests::FromHex;
using tests::ToHex;

using Page = std::array<std::byte, 4096>;

// The table of accounts' rights, as every Jet 4 file holds it on page 3.
TableDefinition RightsTable()
{
    const auto column = [](const char* name, ColumnType type, std::uint16_t number,
                           std::uint16_t variableIndex, std::uint16_t offset, std::uint16_t length,
                           std::uint8_t flags) {
        ColumnDefinition made;
        made.name = name;
        made.type = type;
        made.number = number;
        made.variableIndex = variableIndex;
        made.fixedOffset = offset;
        made.length = length;
        made.flags = flags;
        made.fixed = (flags & 1) != 0;
        return made;
    };
    TableDefinition table;
    table.systemTable = true;
    table.rowCount = 16;
    table.columnCounter = 4;
    table.variableColumnCounter = 1;
    table.ownedPages = {PageNumber{6}, 18};
    table.freePages = {PageNumber{6}, 19};
    table.columns = {column("ACM", ColumnType::Long, 2, 1, 4, 4, 0x13),
                     column("FInheritable", ColumnType::Boolean, 3, 1, 0, 1, 0x13),
                     column("ObjectId", ColumnType::Long, 0, 0, 0, 4, 0x13),
                     column("SID", ColumnType::Binary, 1, 0, 0, 510, 0x32)};
    table.indexes.push_back({.columns = {{.columnNumber = 0, .ascending = true}},
                             .usageMap = {PageNumber{6}, 20},
                             .root = PageNumber{9},
                             .flags = 0x88});
    table.namedIndexes.push_back({.name = "ObjectId", .cascadeUpdates = 4, .cascadeDeletes = 4});
    return table;
}

TableDefinition LongTable()
{
    TableDefinition table;
    for (std::uint16_t i = 0; i < 255; ++i) {
        ColumnDefinition column;
        column.name = "A field with quite a long name " + std::to_string(i);
        column.number = column.ordinal = i;
        table.columns.push_back(column);
    }
    return table;
}

TEST(TableDefinitionWriterTest, SystemTableIsWrittenAsTheEngineDoes)
{
    const TableDefinitionWriter writer(RightsTable(), kJet4);
    ASSERT_EQ(writer.PageCount(), 1U);
    Page page;
    page.fill(std::byte{0xEE});
    writer.WritePage(0, PageNumber::None, page);
    EXPECT_EQ(ToHex(std::span(page).first(0x14F)), ToHex(FromHex(R"(
0201a90e000000004f01000059060000100000000000000001000000000000000000000000000000530400010004000100000001000000120600001306000000
00000000000000000000000459060000020001000000090400001300000000000400040001590600000300010000000904000013000000000000000100045906
000000000000000009040000130000000000000004000959060000010000000000090400003200000000000000fe010600410043004d001800460049006e0068
006500720069007400610062006c00650010004f0062006a0065006300740049006400060053004900440083070000000001ffff00ffff00ffff00ffff00ffff
00ffff00ffff00ffff00ffff0014060000090000000000000088000000000059060000000000000000000000ffffffff000000000404000000000010004f0062
006a0065006300740049006400ffff)")));
    EXPECT_EQ(page[0x14F], std::byte{0});
    EXPECT_EQ(page[4095], std::byte{0});
}

TEST(TableDefinitionWriterTest, DecimalCarriesPrecisionAndScaleInPlaceOfTheLanguage)
{
    TableDefinition table;
    ColumnDefinition column;
    column.name = "col2";
    column.type = ColumnType::Numeric;
    column.number = column.ordinal = column.variableIndex = 1;
    column.precision = 18;
    column.scale = 4;
    column.length = 17;
    column.flags = 3;
    table.columns.push_back(column);
    const TableDefinitionWriter writer(table, kJet4);
    EXPECT_EQ(ToHex(writer.Joined().subspan(63, 25)),
              ToHex(FromHex("10 59060000 0100 0100 0100 12040000 03 00 00000000 0000 1100")));
}

TEST(TableDefinitionWriterTest, LongValueMapsStandBehindTheIndexes)
{
    TableDefinition table;
    ColumnDefinition column;
    column.name = "m";
    column.type = ColumnType::Memo;
    column.number = 7;
    column.fixed = false;
    column.ownedPages = RowId{PageNumber{27}, 2};
    column.freePages = RowId{PageNumber{27}, 3};
    table.columns.push_back(column);
    const TableDefinitionWriter writer(table, kJet4);
    EXPECT_EQ(ToHex(writer.Joined().last(12)), ToHex(FromHex("0700 021b0000 031b0000 ffff")));
}

TEST(TableDefinitionWriterTest, LongDefinitionsGoOnOnFurtherPages)
{
    const TableDefinitionWriter writer(LongTable(), kJet4);
    ASSERT_GT(writer.PageCount(), 2U);
    std::vector<std::byte> joined;
    for (std::size_t place = 0; place < writer.PageCount(); ++place) {
        Page page;
        const bool last = place + 1 == writer.PageCount();
        writer.WritePage(place, last ? PageNumber::None : PageNumber{100}, page);
        EXPECT_EQ(ToHex(std::span(page).first(2)), "0201");
        EXPECT_EQ(ToHex(std::span(page).subspan(4, 4)), last ? "00000000" : "64000000");
        if (!last) {
            EXPECT_EQ(ToHex(std::span(page).subspan(2, 2)), "0000");
        }
        const auto content = std::span(page).subspan(place == 0 ? 0 : 8);
        joined.insert(joined.end(), content.begin(), content.end());
    }
    // Only the first page's header differs: it holds its free bytes and its successor.
    const auto whole = writer.Joined();
    EXPECT_TRUE(std::equal(whole.begin() + 8, whole.end(), joined.begin() + 8));
}

}  // namespace
