// SPDX-License-Identifier: Apache-2.0
// Day numbers taken apart and put together, dates read and written as text.
#include "base/Calendar.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using base::Date;
using base::DateParts;
using base::ReadDate;
using base::TextOf;

namespace {

constexpr double kMonday = 38061;  // 2004-03-15

Date Clock(int hour, int minute, int second = 0)
{
    return base::DateFrom({1899, 12, 30, hour, minute, second});
}

std::string Read(const char* text)
{
    const auto date = ReadDate(text);
    return date ? TextOf(*date) : "none";
}

}  // namespace

TEST(CalendarTest, DayNumbersCountFromTheEndOf1899)
{
    EXPECT_EQ(base::PartsOf(Date{0}), (DateParts{1899, 12, 30, 0, 0, 0}));
    EXPECT_EQ(base::PartsOf(Date{1}), (DateParts{1899, 12, 31, 0, 0, 0}));
    EXPECT_EQ(base::PartsOf(Date{kMonday}), (DateParts{2004, 3, 15, 0, 0, 0}));
    EXPECT_EQ(base::PartsOf(Date{-657434}), (DateParts{100, 1, 1, 0, 0, 0}));
    EXPECT_EQ(base::PartsOf(Date{2958465}), (DateParts{9999, 12, 31, 0, 0, 0}));
}

TEST(CalendarTest, EveryDayComesBack)
{
    for (int day = -657434; day <= 2958465; day += 17)
        ASSERT_EQ(base::DateFrom(base::PartsOf(Date{static_cast<double>(day)})).days, day);
}

TEST(CalendarTest, TheFractionOfANegativeDayIsATimeOfThatDay)
{
    EXPECT_EQ(base::PartsOf(Date{-1.25}), (DateParts{1899, 12, 29, 6, 0, 0}));
    EXPECT_EQ(base::DateFrom({1899, 12, 29, 6, 0, 0}).days, -1.25);
}

TEST(CalendarTest, ADifferenceOfClockReadingsIsReadToTheNearestSecond)
{
    for (int start = 0; start < 1440; start += 7) {
        for (int end = start; end < 1440; ++end) {
            const Date difference{Clock(end / 60, end % 60).days -
                                  Clock(start / 60, start % 60).days};
            const DateParts parts = base::PartsOf(difference);
            ASSERT_EQ(parts.hour * 60 + parts.minute, end - start);
            ASSERT_EQ(parts.second, 0);
        }
    }
}

TEST(CalendarTest, TheLastHalfSecondOfADayBelongsToTheNext)
{
    EXPECT_EQ(base::PartsOf(Date{kMonday + 1 - 1e-9}), (DateParts{2004, 3, 16, 0, 0, 0}));
}

TEST(CalendarTest, NumbersThatAreNoDateCountAsTheNearest)
{
    EXPECT_EQ(base::PartsOf(Date{1e300}).year, 9999);
    EXPECT_EQ(base::PartsOf(Date{-1e300}).year, 100);
    EXPECT_EQ(base::PartsOf(Date{std::numeric_limits<double>::quiet_NaN()}).year, 100);
    EXPECT_EQ(base::PartsOf(Date{2958465.9999999}).year, 9999);
}

TEST(CalendarTest, LeapDaysFollowTheCalendar)
{
    EXPECT_TRUE(base::IsCalendarDate(2000, 2, 29));
    EXPECT_TRUE(base::IsCalendarDate(2004, 2, 29));
    EXPECT_FALSE(base::IsCalendarDate(1900, 2, 29));
    EXPECT_FALSE(base::IsCalendarDate(2004, 2, 30));
    EXPECT_FALSE(base::IsCalendarDate(2004, 13, 1));
    EXPECT_FALSE(base::IsCalendarDate(2004, 4, 31));
    EXPECT_FALSE(base::IsCalendarDate(99, 1, 1));
    EXPECT_FALSE(base::IsCalendarDate(2004, 1, 0));
}

TEST(CalendarTest, MondayIsTheFirstDayOfTheWeek)
{
    EXPECT_EQ(base::WeekdayOf(Date{kMonday}), 1);
    EXPECT_EQ(base::WeekdayOf(Date{kMonday + 6.9}), 7);
    EXPECT_EQ(base::WeekdayOf(Date{0}), 6);
    EXPECT_EQ(base::WeekdayOf(Date{-1}), 5);
}

TEST(CalendarTest, ADateFallsIntoItsDayAndItsTime)
{
    EXPECT_EQ(base::DatePartOf(Date{kMonday + 0.75}).days, kMonday);
    EXPECT_EQ(base::TimePartOf(Date{kMonday + 0.75}).days, 0.75);
    EXPECT_EQ(base::TimePartOf(Date{-1.25}).days, 0.25);
}

TEST(CalendarTest, MinutesAreCountedByTheBoundariesCrossed)
{
    EXPECT_EQ(base::MinutesBetween(Clock(10, 0, 59), Clock(10, 1)), 1);
    EXPECT_EQ(base::MinutesBetween(Clock(23, 58, 59), Clock(23, 59)), 1);
    EXPECT_EQ(base::MinutesBetween(Clock(23, 59, 59), Clock(23, 59)), 0);
    EXPECT_EQ(base::MinutesBetween(Clock(0, 0), Clock(23, 59)), 1439);
    EXPECT_EQ(base::MinutesBetween(Clock(23, 59), Clock(0, 0)), -1439);
}

TEST(CalendarTest, TextShowsThePartsADateHas)
{
    EXPECT_EQ(TextOf(Date{0}), "12:00:00 AM");
    EXPECT_EQ(TextOf(Date{0.5}), "12:00:00 PM");
    EXPECT_EQ(TextOf(Date{kMonday}), "3/15/2004");
    EXPECT_EQ(TextOf(Date{38061.3784722222}), "3/15/2004 9:05:00 AM");
    EXPECT_EQ(TextOf(Date{1}), "12/31/1899");
    EXPECT_EQ(TextOf(Date{-1.25}), "12/29/1899 6:00:00 AM");
}

TEST(CalendarTest, TimesAreRead)
{
    EXPECT_EQ(Read("11:59 PM"), "11:59:00 PM");
    EXPECT_EQ(Read("9:05 am"), "9:05:00 AM");
    EXPECT_EQ(Read("00:30"), "12:30:00 AM");
    EXPECT_EQ(Read("12:30 AM"), "12:30:00 AM");
    EXPECT_EQ(Read("13:00 PM"), "1:00:00 PM");
    EXPECT_EQ(Read("10:30:15"), "10:30:15 AM");
}

TEST(CalendarTest, DatesAreReadInMonthDayYearOrder)
{
    for (const char* text :
         {"3/15/2004", "03/15/2004", " 3/15/2004 ", "2004-03-15", "Mar 15, 2004", "15 March 2004",
          "15-Mar-2004", "Monday, March 15, 2004", "15/3/2004", "3/15/04", "3-15-2004"})
        EXPECT_EQ(Read(text), "3/15/2004") << text;
    EXPECT_EQ(Read("3/4/2004"), "3/4/2004");
    EXPECT_EQ(Read("3/15/2004 9:05:00 AM"), "3/15/2004 9:05:00 AM");
}

TEST(CalendarTest, TwoDigitYearsFallBetween1930And2029)
{
    EXPECT_EQ(Read("1/1/29"), "1/1/2029");
    EXPECT_EQ(Read("1/1/30"), "1/1/1930");
}

TEST(CalendarTest, TextThatIsNoDateIsNone)
{
    for (const char* text : {"", " ", "abc", "1", "38061", "24:00", "12:60", "2/30/2004",
                             "13/13/2004", "03/15/2004 - 09:05 AM", "3/15", "3/15/2004x", "9:05 XM",
                             "AM", "99999999999999999999/1/2004", "1/2/99999", ":", "/", "3//2004"})
        EXPECT_EQ(ReadDate(text), std::nullopt) << text;
}
