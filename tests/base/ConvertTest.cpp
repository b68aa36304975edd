// SPDX-License-Identifier: Apache-2.0
// Conversions between values, numbers and text, and arithmetic with null.
#include "base/Convert.h"

#include "tests/support/ErrorOf.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

using base::Currency;
using base::Date;
using base::Null;
using base::TextOf;
using base::Value;
using tests::ErrorOf;

TEST(ConvertTest, DoublesPrintFifteenSignificantDigits)
{
    EXPECT_EQ(TextOf(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(TextOf(2.0 / 3), "0.666666666666667");
    EXPECT_EQ(TextOf(0.1 + 0.2), "0.3");
    EXPECT_EQ(TextOf(1E15), "1E+15");
    EXPECT_EQ(TextOf(1.23456789012346E15), "1.23456789012346E+15");
    EXPECT_EQ(TextOf(123456789012345.0), "123456789012345");
    EXPECT_EQ(TextOf(0.0001), "0.0001");
    EXPECT_EQ(TextOf(0.00001), "1E-05");
    EXPECT_EQ(TextOf(-0.0), "0");
    EXPECT_EQ(TextOf(0.33), "0.33");
}

TEST(ConvertTest, EveryKindOfValueHasAText)
{
    EXPECT_EQ(TextOf(Value(Null{})), "");
    EXPECT_EQ(TextOf(Value(true)), "True");
    EXPECT_EQ(TextOf(Value(false)), "False");
    EXPECT_EQ(TextOf(Value(std::uint8_t{200})), "200");
    EXPECT_EQ(TextOf(Value(std::int16_t{-5})), "-5");
    EXPECT_EQ(TextOf(Value(1001)), "1001");
    EXPECT_EQ(TextOf(Value(2.3F)), "2.3");
    EXPECT_EQ(TextOf(Value(Date{38061})), "3/15/2004");
    EXPECT_EQ(TextOf(Value("Smith")), "Smith");
    EXPECT_EQ(
        TextOf(Value(base::Bytes{std::byte{'O'}, std::byte{0}, std::byte{'K'}, std::byte{0}})),
        "OK");
    EXPECT_EQ(TextOf(Value(base::Guid{
                  {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 1, 2, 3, 4, 5, 6, 7, 8}})),
              "{12345678-9ABC-DEF0-0102-030405060708}");
}

TEST(ConvertTest, MoneyPrintsWithoutZerosAtTheEnd)
{
    EXPECT_EQ(TextOf(Value(Currency{125000})), "12.5");
    EXPECT_EQ(TextOf(Value(Currency{-1})), "-0.0001");
    EXPECT_EQ(TextOf(Value(Currency{30000})), "3");
    EXPECT_EQ(TextOf(Value(Currency{INT64_MIN})), "-922337203685477.5808");
}

TEST(ConvertTest, DecimalsPrintAllTheirDigits)
{
    EXPECT_EQ(TextOf(Value(base::Decimal{true, {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0}, 2})),
              "-792281625142643375935439503.35");
    EXPECT_EQ(TextOf(Value(base::Decimal{true, {0, 0, 0, 0}, 3})), "0");
    EXPECT_EQ(base::ToDouble(base::Decimal{false, {125, 0, 0, 0}, 1}), 12.5);
}

TEST(ConvertTest, OnlyNumbersAreNumbers)
{
    EXPECT_TRUE(Value(true).IsNumber());
    EXPECT_TRUE(Value(1.5).IsNumber());
    EXPECT_TRUE(Value(base::Decimal{}).IsNumber());
    EXPECT_FALSE(Value("1").IsNumber());
    EXPECT_FALSE(Value(Date{1}).IsNumber());
    EXPECT_FALSE(Value().IsNumber());
    EXPECT_FALSE(Value(base::Bytes{}).IsNumber());
    EXPECT_FALSE(Value(base::Guid{}).IsNumber());
}

TEST(ConvertTest, StrictConversionsRoundHalfToEven)
{
    EXPECT_EQ(base::ToLong(".5"), 0);
    EXPECT_EQ(base::ToLong(1.5), 2);
    EXPECT_EQ(base::ToLong(2.5), 2);
    EXPECT_EQ(base::ToLong("3.5"), 4);
    EXPECT_EQ(base::ToLong("-2.5"), -2);
    EXPECT_EQ(base::ToLong(true), -1);
}

TEST(ConvertTest, OverflowIsTestedAfterRounding)
{
    EXPECT_EQ(base::ToLong(2147483647.4), 2147483647);
    EXPECT_EQ(base::ToInteger("-32768"), -32768);
    EXPECT_EQ(ErrorOf([] { (void)base::ToLong("2147483648"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)base::ToLong("2147483647.5"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)base::ToInteger(40000); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)base::ToLong(std::nan("")); }), 6);
}

TEST(ConvertTest, NullFitsNoTypedVariable)
{
    EXPECT_EQ(ErrorOf([] { (void)base::ToLong(Null{}); }), 94);
    EXPECT_EQ(ErrorOf([] { (void)base::ToInteger(Null{}); }), 94);
    EXPECT_EQ(ErrorOf([] { (void)base::ToDouble(Null{}); }), 94);
    EXPECT_EQ(ErrorOf([] { (void)base::ToDate(Null{}); }), 94);
}

TEST(ConvertTest, UnsuitableValuesAreATypeMismatch)
{
    EXPECT_EQ(ErrorOf([] { (void)base::ToDouble(base::Guid{}); }), 13);
    EXPECT_EQ(ErrorOf([] { (void)base::ToDouble(base::Bytes{}); }), 13);
    EXPECT_EQ(ErrorOf([] { (void)base::ToDate("abc"); }), 13);
}

TEST(ConvertTest, DatesAreMadeFromNumbersAndText)
{
    EXPECT_EQ(base::ToDate(38061), Date{38061});
    EXPECT_EQ(base::ToDate("12:00 PM"), Date{0.5});
}

TEST(ConvertTest, ValOfAValueReadsItsText)
{
    EXPECT_EQ(base::Val(Value(Null{})), 0);
    EXPECT_EQ(base::Val(Value(12.5)), 12.5);
    EXPECT_EQ(base::Val(Value("12 abc")), 12);
    EXPECT_EQ(base::ValLong("2.5"), 2);
    EXPECT_EQ(base::ValLong(Null{}), 0);
    EXPECT_EQ(ErrorOf([] { (void)base::ValLong("3000000000"); }), 6);
}

TEST(ConvertTest, ArithmeticWithNullIsNull)
{
    EXPECT_TRUE(base::Plus(Null{}, 1).IsNull());
    EXPECT_TRUE(base::Minus(1, Null{}).IsNull());
    EXPECT_TRUE(base::Times(Null{}, "abc").IsNull());
}

TEST(ConvertTest, ArithmeticKeepsTheKindOfItsOperands)
{
    EXPECT_EQ(base::Plus(2, std::int16_t{3}), Value(5));
    EXPECT_EQ(base::Plus(2147483647, 1), Value(2147483648.0));
    EXPECT_EQ(base::Plus(1, 0.5), Value(1.5));
    EXPECT_EQ(base::Plus(Currency{125000}, 1), Value(Currency{135000}));
    EXPECT_EQ(base::Times(Currency{125000}, 2.0), Value(25.0));
    EXPECT_EQ(base::Minus(Date{38062}, Date{38061}), Value(1.0));
    EXPECT_EQ(base::Plus(Date{38061}, 1), Value(Date{38062}));
    EXPECT_EQ(base::Plus("2.5", 1), Value(3.5));
    EXPECT_EQ(ErrorOf([] { (void)base::Plus("abc", 1); }), 13);
}

TEST(ConvertTest, DifferenceComparesNumbersByNumberAndTextExactly)
{
    EXPECT_FALSE(base::Differs(5, 5.0));
    EXPECT_TRUE(base::Differs(5, 6));
    EXPECT_FALSE(base::Differs(Date{5}, 5));
    EXPECT_TRUE(base::Differs("Smith", "smith"));
    EXPECT_FALSE(base::Differs("Smith", "Smith"));
    EXPECT_TRUE(base::Differs(5, "5"));
}

TEST(ConvertTest, NullIsNotDifferent)
{
    EXPECT_FALSE(base::Differs(Null{}, 5));
    EXPECT_FALSE(base::Differs("", Null{}));
    EXPECT_FALSE(base::Differs(Null{}, Null{}));
}
