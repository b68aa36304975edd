// SPDX-License-Identifier: Apache-2.0
#include "jet/format/ValueCodec.h"

#include "base/NumberedError.h"
#include "tests/jet/format/Columns.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using base::Value;
using jet::format::DecodeValue;
using jet::format::EncodeValue;
using tests::ColumnDefinition;
using tests::ColumnType;
using tests::FixedColumn;
using tests::FromHex;
using tests::ToHex;
using tests::VariableColumn;

// Both ways at once: the value is stored as these bytes, and the bytes read as the value.
void ExpectStored(const ColumnDefinition& column, const Value& value, std::string_view hex)
{
    EXPECT_EQ(ToHex(EncodeValue(value, column)), ToHex(FromHex(hex)));
    EXPECT_EQ(DecodeValue(FromHex(hex), column), value);
}

int ErrorOf(const Value& value, const ColumnDefinition& column)
{
    return tests::ErrorOf([&] { (void)EncodeValue(value, column); });
}

TEST(ValueCodecTest, Integers)
{
    ExpectStored(FixedColumn(ColumnType::Byte, 0, 0, 1), std::uint8_t{200}, "c8");
    ExpectStored(FixedColumn(ColumnType::Integer, 0, 0, 2), std::int16_t{222}, "de00");
    ExpectStored(FixedColumn(ColumnType::Integer, 0, 0, 2), std::int16_t{-2}, "feff");
    ExpectStored(FixedColumn(ColumnType::Long, 0, 0, 4), std::int32_t{333333333}, "5543de13");
}

TEST(ValueCodecTest, MoneyIsTenThousandths)
{
    ExpectStored(FixedColumn(ColumnType::Currency, 0, 0, 8), base::Currency{35000},
                 "b888000000000000");
}

TEST(ValueCodecTest, FloatingNumbersAndDates)
{
    ExpectStored(FixedColumn(ColumnType::Single, 0, 0, 4), 1.5F, "0000c03f");
    ExpectStored(FixedColumn(ColumnType::Double, 0, 0, 8), 444.555, "7b14ae47e1c87b40");
    ExpectStored(FixedColumn(ColumnType::Date, 0, 0, 8), base::Date{27293.0}, "0000000040a7da40");
    ExpectStored(FixedColumn(ColumnType::Date, 0, 0, 8), base::Date{-1.25}, "000000000000f4bf");
}

TEST(ValueCodecTest, GuidTurnsItsFirstThreeGroups)
{
    const base::Guid guid{{0x8E, 0x39, 0x27, 0x6A, 0xBC, 0xA8, 0x4A, 0xC4, 0x89, 0x1E, 0x49, 0x91,
                           0x1D, 0x84, 0x38, 0xDD}};
    ExpectStored(FixedColumn(ColumnType::Guid, 0, 0, 16), guid,
                 "6a27398e a8bc c44a 891e49911d8438dd");
}

TEST(ValueCodecTest, DecimalIsSignAndFourWords)
{
    ColumnDefinition column = FixedColumn(ColumnType::Numeric, 0, 0, 17);
    ExpectStored(column, base::Decimal{true, {1, 0, 0, 0}, 0},
                 "80 00000000 00000000 00000000 01000000");
    column.scale = 4;
    ExpectStored(column, base::Decimal{false, {0x01020304, 5, 6, 7}, 4},
                 "00 07000000 06000000 05000000 04030201");
}

TEST(ValueCodecTest, DecimalOfAnotherScaleIsRefused)
{
    EXPECT_EQ(
        ErrorOf(base::Decimal{false, {10, 0, 0, 0}, 1}, FixedColumn(ColumnType::Numeric, 0, 0, 17)),
        3421);
}

TEST(ValueCodecTest, BytesAreStoredAsTheyAre)
{
    ExpectStored(VariableColumn(ColumnType::Binary, 0, 0), FromHex("00ff10"), "00ff10");
    EXPECT_EQ(ErrorOf(base::Bytes(101), VariableColumn(ColumnType::Binary, 0, 0)), 3163);
}

TEST(ValueCodecTest, TextIsCompressedOnlyWhereTheColumnAllowsIt)
{
    ColumnDefinition column = VariableColumn(ColumnType::Text, 0, 0);
    ExpectStored(column, "abcdefg", "fffe 61626364656667");
    column.compressed = false;
    ExpectStored(column, "abc", "610062006300");
}

TEST(ValueCodecTest, FixedTextIsFilledWithBlanksAndNeverCompressed)
{
    ColumnDefinition column = FixedColumn(ColumnType::Text, 0, 0, 10);
    column.compressed = true;
    ExpectStored(column, "abc  ", "6100 6200 6300 2000 2000");
    EXPECT_EQ(ToHex(EncodeValue("abc", column)), "61006200630020002000");
}

TEST(ValueCodecTest, TextLimitCountsCharactersInEitherForm)
{
    ColumnDefinition column = VariableColumn(ColumnType::Text, 0, 0, 10);
    EXPECT_EQ(ErrorOf("12345", column), 0);
    EXPECT_EQ(ErrorOf("123456", column), 3163);
}

TEST(ValueCodecTest, ValueOfAnotherKindIsRefused)
{
    EXPECT_EQ(ErrorOf("12", FixedColumn(ColumnType::Long, 0, 0, 4)), 3421);
    EXPECT_EQ(ErrorOf(12.0, FixedColumn(ColumnType::Date, 0, 0, 8)), 3421);
    EXPECT_EQ(ErrorOf(std::int32_t{12}, VariableColumn(ColumnType::Text, 0, 0)), 3421);
}

TEST(ValueCodecTest, TooFewBytesAreDamage)
{
    EXPECT_THROW(
        static_cast<void>(DecodeValue(FromHex("0102"), FixedColumn(ColumnType::Long, 0, 0, 4))),
        base::NumberedError);
    EXPECT_THROW(
        static_cast<void>(DecodeValue(FromHex("0102"), FixedColumn(ColumnType::Numeric, 0, 0, 17))),
        base::NumberedError);
}

}  // namespace
