// SPDX-License-Identifier: Apache-2.0
#include "jet/format/RowView.h"

#include "base/NumberedError.h"
#include "jet/format/FileVersion.h"
#include "jet/format/ValueCodec.h"
#include "tests/jet/format/Columns.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using base::Value;
using jet::format::RowView;
using jet::format::TableDefinition;
using tests::ColumnType;
using tests::FixedColumn;
using tests::FromHex;
using tests::VariableColumn;

Value ValueOf(const RowView& row, std::size_t column)
{
    if (row.IsNull(column)) return {};
    return DecodeValue(row.Field(column), row.Table().columns[column]);
}

// A text B text C byte D integer E long F double G date H currency I boolean
TableDefinition OrdinaryTypes()
{
    TableDefinition table;
    table.columns = {
        VariableColumn(ColumnType::Text, 0, 0),   VariableColumn(ColumnType::Text, 1, 1),
        FixedColumn(ColumnType::Byte, 2, 0, 1),   FixedColumn(ColumnType::Integer, 3, 1, 2),
        FixedColumn(ColumnType::Long, 4, 3, 4),   FixedColumn(ColumnType::Double, 5, 7, 8),
        FixedColumn(ColumnType::Date, 6, 15, 8),  FixedColumn(ColumnType::Currency, 7, 23, 8),
        FixedColumn(ColumnType::Boolean, 8, 0, 1)};
    table.columnCounter = 9;
    table.variableColumnCounter = 2;
    return table;
}

TableDefinition TenTexts()
{
    TableDefinition table;
    for (std::uint16_t i = 0; i < 10; ++i)
        table.columns.push_back(VariableColumn(ColumnType::Text, i, i));
    table.columnCounter = table.variableColumnCounter = 10;
    return table;
}

TEST(RowViewTest, EveryOrdinaryTypeIsFoundInItsPlace)
{
    const TableDefinition table = OrdinaryTypes();
    const std::vector<std::byte> bytes =
        FromHex("0900 02 de00 5543de13 7b14ae47e1c87b40 0000000040a7da40 b888000000000000"
                "fffe61626364656667 680069006a006b006c006d006e006f007000 0000 3c00 2a002100 0200"
                "ff01");
    const RowView row(bytes, table);
    EXPECT_EQ(ValueOf(row, 0), "abcdefg");
    EXPECT_EQ(ValueOf(row, 1), "hijklmnop");  // the two bytes of slack behind it are not its own
    EXPECT_EQ(ValueOf(row, 2), std::uint8_t{2});
    EXPECT_EQ(ValueOf(row, 3), std::int16_t{222});
    EXPECT_EQ(ValueOf(row, 4), 333333333);
    EXPECT_EQ(ValueOf(row, 5), 444.555);
    EXPECT_EQ(ValueOf(row, 6), base::Date{27293});
    EXPECT_EQ(ValueOf(row, 7), base::Currency{35000});
    EXPECT_FALSE(row.IsNull(8));
    EXPECT_TRUE(row.Boolean(8));
}

TEST(RowViewTest, FalseIsNoNull)
{
    const TableDefinition table = OrdinaryTypes();
    const std::vector<std::byte> bytes =
        FromHex("0900 00 0000 00000000 0000000000000000 00000000003bdd40 0000000000000000"
                "6100 6200 2500 23002100 0200 ff00");
    const RowView row(bytes, table);
    EXPECT_FALSE(row.IsNull(8));
    EXPECT_FALSE(row.Boolean(8));
    EXPECT_EQ(ValueOf(row, 0), "a");
    EXPECT_EQ(ValueOf(row, 1), "b");
}

TEST(RowViewTest, NullColumnsHaveEqualNeighbouringOffsets)
{
    const TableDefinition table = TenTexts();
    const std::vector<std::byte> bytes =
        FromHex("0a00 fffe726f7733636f6c32 fffe726f7733636f6c33 fffe726f7733636f6c39"
                "2000 2000 1600 1600 1600 1600 1600 1600 0c00 0200 0200 0a00 0601");
    const RowView row(bytes, table);
    EXPECT_TRUE(row.IsNull(0));
    EXPECT_EQ(ValueOf(row, 1), "row3col2");
    EXPECT_EQ(ValueOf(row, 2), "row3col3");
    EXPECT_TRUE(row.IsNull(7));
    EXPECT_EQ(ValueOf(row, 8), "row3col9");
    EXPECT_TRUE(row.IsNull(9));
}

TEST(RowViewTest, ColumnsAddedAfterTheRowAreNull)
{
    const TableDefinition table = TenTexts();
    const std::vector<std::byte> bytes =
        FromHex("0300 fffe726f7731636f6c31 fffe726f7731636f6c32 1600 1600 0c00 0200 0300 03");
    const RowView row(bytes, table);
    EXPECT_EQ(ValueOf(row, 0), "row1col1");
    EXPECT_EQ(ValueOf(row, 1), "row1col2");
    for (std::size_t column = 2; column < 10; ++column)
        EXPECT_TRUE(row.IsNull(column)) << column;
}

TEST(RowViewTest, DroppedColumnsKeepTheirPlaces)
{
    TableDefinition table;
    table.columns = {FixedColumn(ColumnType::Long, 0, 0, 4), FixedColumn(ColumnType::Long, 2, 8, 4),
                     VariableColumn(ColumnType::Text, 3, 0),
                     VariableColumn(ColumnType::Text, 5, 2)};
    table.columnCounter = 6;
    table.variableColumnCounter = 3;
    const std::vector<std::byte> bytes =
        FromHex("0600 00000000 01000000 02000000 fffe666f6f fffe666f6f5f64656c65746564"
                "fffe666f6f32 2600 2000 1300 0e00 0300 3f");
    const RowView row(bytes, table);
    EXPECT_EQ(ValueOf(row, 0), 0);
    EXPECT_EQ(ValueOf(row, 1), 2);
    EXPECT_EQ(ValueOf(row, 2), "foo");
    EXPECT_EQ(ValueOf(row, 3), "foo2");
}

TEST(RowViewTest, TableWithoutVariableColumnsHasNoOffsets)
{
    TableDefinition table;
    table.columns = {FixedColumn(ColumnType::Long, 0, 0, 4),
                     FixedColumn(ColumnType::Boolean, 1, 0, 1)};
    table.columnCounter = 2;
    const std::vector<std::byte> bytes = FromHex("0200 07000000 03");
    const RowView row(bytes, table);
    EXPECT_EQ(ValueOf(row, 0), 7);
    EXPECT_TRUE(row.Boolean(1));
}

TEST(RowViewTest, RowOlderThanTheFirstVariableColumnHasNoOffsets)
{
    TableDefinition table;
    table.columns = {FixedColumn(ColumnType::Long, 0, 0, 4),
                     VariableColumn(ColumnType::Text, 1, 0)};
    table.columnCounter = 2;
    table.variableColumnCounter = 1;
    table.columnsBeforeVariable = 1;
    const std::vector<std::byte> bytes = FromHex("0100 07000000 01");
    const RowView row(bytes, table);
    EXPECT_EQ(ValueOf(row, 0), 7);
    EXPECT_TRUE(row.IsNull(1));
}

TEST(RowViewTest, RowThatContradictsItselfIsDamage)
{
    const TableDefinition table = TenTexts();
    const auto read = [&table](std::string_view hex) {
        const std::vector<std::byte> bytes = FromHex(hex);
        const RowView row(bytes, table);
        for (std::size_t column = 0; column < table.columns.size(); ++column)
            static_cast<void>(ValueOf(row, column));
    };
    EXPECT_THROW(read(""), base::NumberedError);
    EXPECT_THROW(read("ffff 00"), base::NumberedError);
    EXPECT_THROW(read("0300 03"), base::NumberedError);                      // no offsets
    EXPECT_THROW(read("0300 61 0300 0200 ff00 07"), base::NumberedError);    // too many
    EXPECT_THROW(read("0300 6100 0400 0000 0100 07"), base::NumberedError);  // before the row
    EXPECT_THROW(read("0300 6100 0900 0200 0100 01"), base::NumberedError);  // behind it
    EXPECT_THROW(read("0300 6100 0200 0400 0100 01"), base::NumberedError);  // backwards
}

}  // namespace
