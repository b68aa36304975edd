// SPDX-License-Identifier: Apache-2.0
// Tests of jet/format/IndexKey: the keys of every type, as the original engine wrote them.
#include "jet/format/IndexKey.h"

#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>
#include <limits>

namespace jet::format {
namespace {

using tests::ToHex;

ColumnDefinition Column(ColumnType type)
{
    ColumnDefinition column;
    column.type = type;
    return column;
}

std::string KeyHex(ColumnType type, const base::Value& value, bool ascending = true)
{
    std::vector<std::byte> key;
    AppendKeyColumn(key, value, Column(type), ascending);
    return ToHex(key);
}

std::string Descending(ColumnType type, const base::Value& value)
{
    return KeyHex(type, value, false);
}

base::Bytes BytesOf(std::string_view text)
{
    const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
    return {bytes.begin(), bytes.end()};
}

TEST(IndexKeyTest, IntegersAreBigEndianWithTheSignTurned)
{
    EXPECT_EQ(KeyHex(ColumnType::Long, std::int32_t{-23}), "7f7fffffe9");
    EXPECT_EQ(Descending(ColumnType::Long, std::int32_t{-23}), "8080000016");
    EXPECT_EQ(Descending(ColumnType::Long, std::int32_t{19}), "807fffffec");
    EXPECT_EQ(KeyHex(ColumnType::Integer, std::int16_t{-1}), "7f7fff");
    EXPECT_EQ(Descending(ColumnType::Integer, std::int16_t{-1}), "808000");
    EXPECT_EQ(KeyHex(ColumnType::Byte, std::uint8_t{13}), "7f0d");
    EXPECT_EQ(Descending(ColumnType::Byte, std::uint8_t{255}), "8000");
    EXPECT_EQ(KeyHex(ColumnType::Currency, base::Currency{11000}), "7f8000000000002af8");
    EXPECT_EQ(Descending(ColumnType::Currency, base::Currency{11000}), "807fffffffffffd507");
}

TEST(IndexKeyTest, NumbersWithAPointAreOrderedByTheirBits)
{
    EXPECT_EQ(Descending(ColumnType::Double, 1.1), "80400e666666666665");
    EXPECT_EQ(KeyHex(ColumnType::Double, -84533.0), "7f3f0b5cafffffffff");
    EXPECT_EQ(Descending(ColumnType::Single, 1.1F), "8040733332");
    EXPECT_EQ(Descending(ColumnType::Date, base::Date{36475}), "803f1e309fffffffff");
    EXPECT_EQ(KeyHex(ColumnType::Double, -0.0), KeyHex(ColumnType::Double, 0.0));
}

TEST(IndexKeyTest, BooleanTrueComesFirstAndNullIsFalse)
{
    EXPECT_EQ(KeyHex(ColumnType::Boolean, true), "7f00");
    EXPECT_EQ(KeyHex(ColumnType::Boolean, false), "7fff");
    EXPECT_EQ(Descending(ColumnType::Boolean, true), "80ff");
    EXPECT_EQ(KeyHex(ColumnType::Boolean, base::Null{}), "7fff");
}

TEST(IndexKeyTest, GuidIsABinaryValueInDisplayOrder)
{
    const base::Guid guid{{0x0F, 0xC4, 0x9B, 0x7B, 0xE6, 0x56, 0x42, 0x28, 0xAE, 0xDC, 0xDF, 0x8B,
                           0xDF, 0x4C, 0x4A, 0x64}};
    EXPECT_EQ(KeyHex(ColumnType::Guid, guid), "7f0fc49b7be656422809aedcdf8bdf4c4a6408");
}

TEST(IndexKeyTest, BinaryIsGroupedByEight)
{
    EXPECT_EQ(KeyHex(ColumnType::Binary, BytesOf("a")), "7f610000000000000001");
    EXPECT_EQ(Descending(ColumnType::Binary, BytesOf("a")), "809efffffffffffffffe");
    EXPECT_EQ(KeyHex(ColumnType::Binary, BytesOf("abcdefgh")), "7f616263646566676808");
    EXPECT_EQ(Descending(ColumnType::Binary, BytesOf("abcdefgh")), "809e9d9c9b9a999897f7");
    EXPECT_EQ(KeyHex(ColumnType::Binary, BytesOf("abcdefghi")),
              "7f616263646566676809690000000000000001");
    EXPECT_EQ(Descending(ColumnType::Binary, BytesOf("abcdefghi")),
              "809e9d9c9b9a9998970996fffffffffffffffe");
    EXPECT_EQ(KeyHex(ColumnType::Binary, base::Bytes{}), "7f");
}

TEST(IndexKeyTest, DecimalIsItsSignAndItsWholeNumber)
{
    base::Decimal number{.magnitude = {0x12345678, 0x9ABCDEF0, 1, 0}};
    EXPECT_EQ(KeyHex(ColumnType::Numeric, number), "7fff00000000000000019abcdef012345678");
    EXPECT_EQ(Descending(ColumnType::Numeric, number), "80fffffffffffffffffe6543210fedcba987");
    number.negative = true;
    EXPECT_EQ(KeyHex(ColumnType::Numeric, number), "7f00fffffffffffffffe6543210fedcba987");
    EXPECT_EQ(Descending(ColumnType::Numeric, number), "800000000000000000019abcdef012345678");
    EXPECT_EQ(KeyHex(ColumnType::Numeric, base::Decimal{.negative = true}),
              KeyHex(ColumnType::Numeric, base::Decimal{}));
}

TEST(IndexKeyTest, NullHasAFlagAndNoValue)
{
    EXPECT_EQ(KeyHex(ColumnType::Long, base::Null{}), "00");
    EXPECT_EQ(Descending(ColumnType::Text, base::Null{}), "ff");
}

TEST(IndexKeyTest, TextIsItsSortKeyAndDescendingEndsWithAPlainZero)
{
    EXPECT_EQ(KeyHex(ColumnType::Text, "Chai"), "7f4d574a590100");
    EXPECT_EQ(Descending(ColumnType::Text, "Chai"), "80b2a8b5a6feff00");
    EXPECT_EQ(KeyHex(ColumnType::Text, ""), "7f0100");
}

TEST(IndexKeyTest, OfATextTheFirst255CharactersCount)
{
    const std::string longest(255, 'x');
    EXPECT_EQ(KeyHex(ColumnType::Memo, longest + "abc"), KeyHex(ColumnType::Memo, longest));
    EXPECT_NE(KeyHex(ColumnType::Memo, longest), KeyHex(ColumnType::Memo, longest.substr(1)));
    // A blank that the cut brings to the end does not count either.
    const std::string blankAtTheCut = std::string(254, 'x') + " y";
    EXPECT_EQ(KeyHex(ColumnType::Memo, blankAtTheCut),
              KeyHex(ColumnType::Memo, std::string(254, 'x')));
}

template <class T>
void ExpectAscending(ColumnType type, const std::vector<T>& values)
{
    for (std::size_t i = 0; i + 1 < values.size(); ++i) {
        EXPECT_LT(KeyHex(type, values[i]), KeyHex(type, values[i + 1])) << i;
        EXPECT_GT(Descending(type, values[i]), Descending(type, values[i + 1])) << i;
    }
}

TEST(IndexKeyTest, ByteOrderIsValueOrder)
{
    ExpectAscending<std::int32_t>(ColumnType::Long,
                                  {std::numeric_limits<std::int32_t>::min(), -256, -1, 0, 1, 255,
                                   256, std::numeric_limits<std::int32_t>::max()});
    ExpectAscending<double>(ColumnType::Double,
                            {-1e300, -2, -1.5, -1e-300, 0, 1e-300, 0.5, 1, 1e300});
    ExpectAscending<float>(ColumnType::Single, {-1e30F, -2, 0, 1e-30F, 3, 1e30F});
    ExpectAscending<base::Currency>(
        ColumnType::Currency, {base::Currency{-90000000000}, base::Currency{-1}, base::Currency{0},
                               base::Currency{1}, base::Currency{90000000000}});
}

int NumberThrownBy(ColumnType type, const base::Value& value)
{
    return tests::ErrorOf([&] { (void)KeyHex(type, value); });
}

TEST(IndexKeyTest, WhatCannotBeKeyedIsRefused)
{
    EXPECT_EQ(NumberThrownBy(ColumnType::Text, "Жук"), 3421);
    EXPECT_EQ(NumberThrownBy(ColumnType::Long, "12"), 3421);
    EXPECT_EQ(NumberThrownBy(ColumnType::Ole, base::Bytes{}), 3251);
    // Of another scale than the column's.
    EXPECT_EQ(NumberThrownBy(ColumnType::Numeric, base::Decimal{.scale = 2}), 3421);
}

}  // namespace
}  // namespace jet::format
