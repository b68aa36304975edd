// SPDX-License-Identifier: Apache-2.0
// Tests of jet/sql/DateLiteral.h: #...# is read the same way on every machine.
#include "jet/sql/DateLiteral.h"

#include "base/Calendar.h"

#include <gtest/gtest.h>

namespace jet::sql {
namespace {

using base::DateParts;

constexpr double kToday = 38061;  // 15 March 2004

std::optional<DateParts> Read(std::string_view text)
{
    const auto date = ReadDateLiteral(text, base::Date{kToday});
    if (!date) return std::nullopt;
    return base::PartsOf(*date);
}

DateParts Day(int year, int month, int day)
{
    return {year, month, day, 0, 0, 0};
}

TEST(DateLiteralTest, MonthStandsBeforeDay)
{
    EXPECT_EQ(Read("11/21/2026"), Day(2026, 11, 21));
    EXPECT_EQ(Read("05/11/2026"), Day(2026, 5, 11));
    EXPECT_EQ(Read("5-11-2026"), Day(2026, 5, 11));
    EXPECT_EQ(Read("5 11 2026"), Day(2026, 5, 11));
}

TEST(DateLiteralTest, DayStandsFirstOnlyWhereNoMonthCan)
{
    EXPECT_EQ(Read("21/11/2026"), Day(2026, 11, 21));
    EXPECT_EQ(Read("13/13/2026"), std::nullopt);
}

TEST(DateLiteralTest, YearOfFourDigitsMayStandFirst)
{
    EXPECT_EQ(Read("2026-11-21"), Day(2026, 11, 21));
    EXPECT_EQ(Read("2026/2/3"), Day(2026, 2, 3));
}

TEST(DateLiteralTest, TwoDigitYearsTurnAtThirty)
{
    EXPECT_EQ(Read("11/21/26"), Day(2026, 11, 21));
    EXPECT_EQ(Read("11/21/29"), Day(2029, 11, 21));
    EXPECT_EQ(Read("11/21/30"), Day(1930, 11, 21));
    EXPECT_EQ(Read("1/2/99"), Day(1999, 1, 2));
}

TEST(DateLiteralTest, NamedMonthsNeedNoOrder)
{
    EXPECT_EQ(Read("21-Nov-2026"), Day(2026, 11, 21));
    EXPECT_EQ(Read("November 21, 2026"), Day(2026, 11, 21));
    EXPECT_EQ(Read("2026 march 5"), Day(2026, 3, 5));
    EXPECT_EQ(Read("21-Nox-2026"), std::nullopt);
}

TEST(DateLiteralTest, TwoNumbersAreMonthAndDayOfThisYearOrMonthAndYear)
{
    EXPECT_EQ(Read("5/11"), Day(2004, 5, 11));
    EXPECT_EQ(Read("5/2010"), Day(2010, 5, 1));
}

TEST(DateLiteralTest, TimeStandsAloneOrBehindTheDate)
{
    EXPECT_EQ(Read("11/21/2026 3:05 PM"), (DateParts{2026, 11, 21, 15, 5, 0}));
    EXPECT_EQ(Read("14:05:09"), (DateParts{1899, 12, 30, 14, 5, 9}));
    EXPECT_EQ(Read("12 AM"), (DateParts{1899, 12, 30, 0, 0, 0}));
    EXPECT_EQ(Read("12:30 pm"), (DateParts{1899, 12, 30, 12, 30, 0}));
    EXPECT_EQ(Read("8:00AM"), (DateParts{1899, 12, 30, 8, 0, 0}));
}

TEST(DateLiteralTest, TextThatIsNoDateIsRefused)
{
    for (const char* text : {"", " ", "abc", "21.11.2026", "2/30/2004", "25:00", "13:00 PM", "1",
                             "1/2/3/4", "12:60", "1/2/2004 :", "99999999999/1/1", "1/1/99999",
                             "0/0/0", "Nov", "Nov Nov 5", "5:6:7:8", "PM"})
        EXPECT_EQ(Read(text), std::nullopt) << text;
}

}  // namespace
}  // namespace jet::sql
