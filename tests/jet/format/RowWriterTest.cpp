// SPDX-License-Identifier: Apache-2.0
#include "jet/format/RowWriter.h"

#include "jet/format/FileVersion.h"
#include "jet/format/ValueCodec.h"
#include "tests/jet/format/Columns.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using jet::format::RowView;
using jet::format::RowWriter;
using jet::format::TableDefinition;
using tests::ColumnType;
using tests::FixedColumn;
using tests::FromHex;
using tests::ToHex;
using tests::VariableColumn;

// Number 1 and variable column 1 were dropped.
TableDefinition TableWithHoles()
{
    TableDefinition table;
    table.columns = {FixedColumn(ColumnType::Long, 0, 0, 4), FixedColumn(ColumnType::Long, 2, 8, 4),
                     VariableColumn(ColumnType::Text, 3, 0), VariableColumn(ColumnType::Text, 5, 2),
                     FixedColumn(ColumnType::Boolean, 6, 0, 1)};
    table.columnCounter = 7;
    table.variableColumnCounter = 3;
    return table;
}

std::string Written(const RowWriter& writer)
{
    const std::vector<std::byte> row = writer.Row();
    EXPECT_EQ(row.size(), writer.Size());
    return ToHex(row);
}

TEST(RowWriterTest, NullRowHasItsWholeFixedPart)
{
    const TableDefinition table = TableWithHoles();
    EXPECT_EQ(Written(RowWriter(table)),
              ToHex(FromHex("0700 00000000 00000000 00000000 0e00 0e00 0e00 0e00 0300 00")));
}

TEST(RowWriterTest, DroppedColumnsHoldNothing)
{
    const TableDefinition table = TableWithHoles();
    RowWriter writer(table);
    writer.SetField(0, FromHex("01000000"));
    writer.SetField(1, FromHex("02000000"));
    writer.SetField(2, FromHex("fffe666f6f"));
    writer.SetField(3, FromHex("fffe666f6f32"));
    writer.SetBoolean(4, true);
    EXPECT_EQ(Written(writer), ToHex(FromHex("0700 01000000 00000000 02000000 fffe666f6f"
                                             "fffe666f6f32 1900 1300 1300 0e00 0300 6d")));
}

TEST(RowWriterTest, EmptyTextIsNoNull)
{
    const TableDefinition table = TableWithHoles();
    RowWriter writer(table);
    writer.SetField(2, {});
    const std::vector<std::byte> bytes = writer.Row();
    const RowView row(bytes, table);
    EXPECT_FALSE(row.IsNull(2));
    EXPECT_TRUE(row.Field(2).empty());
    EXPECT_TRUE(row.IsNull(3));
}

TEST(RowWriterTest, TableWithoutVariableColumnsHasNoOffsets)
{
    TableDefinition table;
    table.columns = {FixedColumn(ColumnType::Long, 0, 0, 4)};
    table.columnCounter = 1;
    RowWriter writer(table);
    writer.SetField(0, FromHex("07000000"));
    EXPECT_EQ(Written(writer), ToHex(FromHex("0100 07000000 01")));
}

TEST(RowWriterTest, OldRowIsWrittenInTheTablesPresentShape)
{
    const TableDefinition table = TableWithHoles();
    const std::vector<std::byte> old =
        FromHex("0600 00000000 01000000 02000000 fffe666f6f fffe666f6f5f64656c65746564"
                "fffe666f6f32 2600 2000 1300 0e00 0300 3f");
    RowWriter writer(RowView(old, table));
    EXPECT_EQ(Written(writer), ToHex(FromHex("0700 00000000 00000000 02000000 fffe666f6f"
                                             "fffe666f6f32 1900 1300 1300 0e00 0300 2d")));
    writer.SetNull(2);
    EXPECT_EQ(Written(writer), ToHex(FromHex("0700 00000000 00000000 02000000 fffe666f6f32"
                                             "1400 0e00 0e00 0e00 0300 25")));
}

// 22 variable columns whose values end where a real row of 290 bytes has them end
// (test2V1997.mdb, page 50, slot 0); number 73 is the last column.
TableDefinition RealWideTable()
{
    TableDefinition table;
    table.row = jet::format::kRowJet3;
    for (std::uint16_t i = 0; i < 22; ++i)
        table.columns.push_back(VariableColumn(ColumnType::Text, i, i, 255));
    table.columns.push_back(FixedColumn(ColumnType::Binary, 73, 0, 0x90));
    table.columnCounter = 74;
    table.variableColumnCounter = 22;
    return table;
}

TEST(RowWriterTest, SurplusJumpIsFillingAsInARealRow)
{
    const TableDefinition table = RealWideTable();
    const std::vector<std::byte> ends = FromHex("9199a5a5b2b3b3b3b3c7c7dbdbdbdbeff0f1f2f3f3f3ff");
    RowWriter writer(table);
    for (std::size_t i = 0; i < 22; ++i) {
        const auto length =
            std::to_integer<std::size_t>(ends[i + 1]) - std::to_integer<std::size_t>(ends[i]);
        writer.SetField(i, std::vector<std::byte>(length, static_cast<std::byte>('a' + i)));
    }
    const std::vector<std::byte> bytes = writer.Row();
    ASSERT_EQ(bytes.size(), 290U);
    EXPECT_EQ(ToHex(std::span(bytes).subspan(255, 25)),
              "fff3f3f3f2f1f0efdbdbdbdbc7c7b3b3b3b3b2a5a59991ff16");
    const RowView row(bytes, table);
    EXPECT_EQ(ToHex(row.Field(21)), ToHex(std::vector<std::byte>(12, std::byte{'v'})));
}

TEST(RowWriterTest, EveryLengthOfAJet3RowReadsBack)
{
    const TableDefinition table = RealWideTable();
    for (std::size_t longest = 0; longest < 90; ++longest) {
        RowWriter writer(table);
        for (std::size_t i = 0; i < 22; ++i)
            writer.SetField(i, std::vector<std::byte>((longest * (i + 1)) % (longest + 1) + i,
                                                      static_cast<std::byte>('a' + i)));
        writer.SetField(longest % 22, std::vector<std::byte>(3 * longest, std::byte{'*'}));
        const std::vector<std::byte> bytes = writer.Row();
        ASSERT_EQ(bytes.size(), writer.Size());
        const RowView row(bytes, table);
        for (std::size_t i = 0; i < 22; ++i)
            ASSERT_EQ(ToHex(row.Field(i)), ToHex(writer.Field(i))) << longest << " " << i;
    }
}

}  // namespace
