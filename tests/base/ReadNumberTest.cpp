// SPDX-License-Identifier: Apache-2.0
// The strict and the lenient reading of numbers.
#include "base/ReadNumber.h"

#include "base/Convert.h"
#include "base/NumberedError.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

using base::ReadNumber;
using base::Val;

namespace {

int FailureOf(const std::string& text)
{
    return tests::ErrorOf([&] { (void)ReadNumber(text); });
}

}  // namespace

TEST(ReadNumberTest, WholeTextsAreRead)
{
    EXPECT_EQ(ReadNumber("123"), 123);
    EXPECT_EQ(ReadNumber(" 123 "), 123);
    EXPECT_EQ(ReadNumber("\t123"), 123);
    EXPECT_EQ(ReadNumber("1,234"), 1234);
    EXPECT_EQ(ReadNumber("1,2,3"), 123);
    EXPECT_EQ(ReadNumber("$123"), 123);
    EXPECT_EQ(ReadNumber("$1,234.50"), 1234.5);
    EXPECT_EQ(ReadNumber("(5)"), -5);
    EXPECT_EQ(ReadNumber("5-"), -5);
    EXPECT_EQ(ReadNumber("-5"), -5);
    EXPECT_EQ(ReadNumber("+5"), 5);
    EXPECT_EQ(ReadNumber("1."), 1);
    EXPECT_EQ(ReadNumber("1e3"), 1000);
    EXPECT_EQ(ReadNumber("&H10"), 16);
    EXPECT_EQ(ReadNumber("&O17"), 15);
    EXPECT_EQ(ReadNumber(".33"), 0.33);
    EXPECT_EQ(ReadNumber("22.00"), 22);
}

TEST(ReadNumberTest, OtherTextsAreATypeMismatch)
{
    for (const char* text :
         {"",    " ",   "12 abc", "abc", "12  VEH", "1 234", "12%", "0x10", "1d3",   "(5",   "5)",
          "--5", "-5-", "$$5",    "1e",  ".",       "-",     "&H",  "&Hx",  "1.2.3", "1,5.x"})
        EXPECT_EQ(FailureOf(text), 13) << text;
}

TEST(ReadNumberTest, NumbersBeyondADoubleOverflow)
{
    EXPECT_EQ(FailureOf("1e400"), 6);
    EXPECT_EQ(FailureOf("0.1e99999999999999"), 6);
    EXPECT_EQ(FailureOf(std::string(400, '9')), 6);
    EXPECT_EQ(FailureOf("&H100000000"), 6);
}

TEST(ReadNumberTest, NumbersTooSmallForADoubleAreZero)
{
    EXPECT_EQ(ReadNumber("1e-400"), 0);
    EXPECT_EQ(ReadNumber("0e99999999999999"), 0);
    EXPECT_EQ(ReadNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(ReadNumberTest, ValTakesTheLeadingNumber)
{
    EXPECT_EQ(Val("12 abc"), 12);
    EXPECT_EQ(Val("1 6 15 198th St"), 1615198);
    EXPECT_EQ(Val("\t1\n2"), 12);
    EXPECT_EQ(Val("-.5x"), -0.5);
    EXPECT_EQ(Val("1.5.7"), 1.5);
    EXPECT_EQ(Val("1E2"), 100);
    EXPECT_EQ(Val("1d2"), 100);
    EXPECT_EQ(Val("12E"), 12);
    EXPECT_EQ(Val("1.1%"), 1.1);
}

TEST(ReadNumberTest, ValStopsAtDollarsAndCommas)
{
    EXPECT_EQ(Val("$5"), 0);
    EXPECT_EQ(Val("1,234"), 1);
}

TEST(ReadNumberTest, ValOfNoNumberIsZero)
{
    for (const char* text : {"", "abc", ".", "-", "E5", "&H", "&"})
        EXPECT_EQ(Val(text), 0) << text;
}

TEST(ReadNumberTest, ValUnderstandsHexadecimalAndOctal)
{
    EXPECT_EQ(Val("&H1F"), 31);
    EXPECT_EQ(Val("&o17"), 15);
    EXPECT_EQ(Val("&HFFFF"), -1);
}

TEST(ReadNumberTest, AVehicleThatReadsAsAnExponentOverflows)
{
    EXPECT_THROW((void)Val("12  E350 Van"), base::NumberedError);
}
