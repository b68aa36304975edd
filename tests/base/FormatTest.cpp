// SPDX-License-Identifier: Apache-2.0
// Numbers and dates printed through the patterns the program uses.
#include "base/Format.h"

#include "base/Calendar.h"
#include "base/Convert.h"

#include <gtest/gtest.h>

using base::Date;
using base::Format;
using base::Null;
using base::Value;

namespace {

Value At(int hour, int minute, int second = 0)
{
    return base::DateFrom({1899, 12, 30, hour, minute, second});
}

}  // namespace

TEST(FormatTest, ClockTimesPrintWithTwelveHours)
{
    constexpr const char* kPattern = "hh:mm AM/PM";
    EXPECT_EQ(Format(Date{0}, kPattern), "12:00 AM");
    EXPECT_EQ(Format(Date{0.5}, kPattern), "12:00 PM");
    EXPECT_EQ(Format(At(0, 30), kPattern), "12:30 AM");
    EXPECT_EQ(Format(At(12, 30), kPattern), "12:30 PM");
    EXPECT_EQ(Format(At(9, 5), kPattern), "09:05 AM");
    EXPECT_EQ(Format(At(17, 55), kPattern), "05:55 PM");
    EXPECT_EQ(Format(At(23, 59), kPattern), "11:59 PM");
    EXPECT_EQ(Format(At(23, 59, 59), kPattern), "11:59 PM");
}

TEST(FormatTest, DatesPrintWithTwoDigitsEach)
{
    EXPECT_EQ(Format(Date{36895.7465}, "mm/dd/yyyy"), "01/04/2001");
}

TEST(FormatTest, MonthsBecomeMinutesAfterAnHour)
{
    EXPECT_EQ(Format(Date{38061.3784722222}, "mm/dd/yyyy - hh:mm AMPM"), "03/15/2004 - 09:05 AM");
    EXPECT_EQ(Format(At(9, 5, 7), "hh:mm:ss"), "09:05:07");
    EXPECT_EQ(Format(At(9, 5, 7), "hh:nn"), "09:05");
}

TEST(FormatTest, DifferencesPrintTheirMagnitude)
{
    EXPECT_EQ(Format(-0.9166666666666666, "hh:mm"), "22:00");
    EXPECT_EQ(Format(-0.25, "hh:mm"), "06:00");
    EXPECT_EQ(Format(-1.25, "hh:mm"), "06:00");
    EXPECT_EQ(Format(0.0972222222222222, "hh:mm"), "02:20");
}

TEST(FormatTest, EveryMinuteComesBackFromItsText)
{
    for (int minute = 0; minute < 1440; ++minute) {
        const std::string text = Format(At(minute / 60, minute % 60), "hh:mm AM/PM");
        const auto read = base::ReadDate(text);
        ASSERT_TRUE(read) << text;
        ASSERT_EQ(Format(*read, "hh:mm AM/PM"), text);
    }
}

TEST(FormatTest, TextThatIsADateIsConvertedFirst)
{
    EXPECT_EQ(Format("3/15/2004", "mm/dd/yyyy"), "03/15/2004");
    EXPECT_EQ(Format("9:05 PM", "hh:mm"), "21:05");
}

TEST(FormatTest, OtherTextIsReturnedUnchanged)
{
    EXPECT_EQ(Format("abc", "hh:mm AM/PM"), "abc");
    EXPECT_EQ(Format("", "hh:mm AM/PM"), "");
    EXPECT_EQ(Format("abc", "##.00"), "abc");
    EXPECT_EQ(Format("", "##.00"), "");
}

TEST(FormatTest, NullPrintsNothing)
{
    for (const char* pattern : {"##.00", "#", "0#", "hh:mm", "mm/dd/yyyy"})
        EXPECT_EQ(Format(Null{}, pattern), "");
}

TEST(FormatTest, HundredthsRoundHalfAwayFromZeroOnTheDecimalText)
{
    EXPECT_EQ(Format(0.125, "##.00"), ".13");
    EXPECT_EQ(Format(-0.125, "##.00"), "-.13");
    EXPECT_EQ(Format(1.005, "##.00"), "1.01");
    EXPECT_EQ(Format(2.675, "##.00"), "2.68");
    EXPECT_EQ(Format(0.995, "##.00"), "1.00");
    EXPECT_EQ(Format(0.005, "##.00"), ".01");
    EXPECT_EQ(Format(0.0049, "##.00"), ".00");
    EXPECT_EQ(Format(99.995, "##.00"), "100.00");
    EXPECT_EQ(Format(123456.789, "##.00"), "123456.79");
    EXPECT_EQ(Format("2.335", "##.00"), "2.34");
}

TEST(FormatTest, ZeroHasNoDigitInFrontOfThePoint)
{
    for (const char* pattern : {"##.00", "###.00"}) {
        EXPECT_EQ(Format(0, pattern), ".00");
        EXPECT_EQ(Format(1.0 / 3, pattern), ".33");
        EXPECT_EQ(Format(5, pattern), "5.00");
        EXPECT_EQ(Format(22, pattern), "22.00");
        EXPECT_EQ(Format(-0.5, pattern), "-.50");
        EXPECT_EQ(Format(-0.001, pattern), "-.00");
    }
}

TEST(FormatTest, WholeNumberPatternsPadOnlyWithZeroMarks)
{
    for (const char* pattern : {"#", "#########"}) {
        EXPECT_EQ(Format(0, pattern), "");
        EXPECT_EQ(Format(1.0 / 3, pattern), "");
        EXPECT_EQ(Format(5, pattern), "5");
        EXPECT_EQ(Format(22, pattern), "22");
        EXPECT_EQ(Format(-0.5, pattern), "-1");
        EXPECT_EQ(Format(1234567890, pattern), "1234567890");
    }
    EXPECT_EQ(Format(0, "0#"), "00");
    EXPECT_EQ(Format(1.0 / 3, "0#"), "00");
    EXPECT_EQ(Format(5, "0#"), "05");
    EXPECT_EQ(Format(22, "0#"), "22");
    EXPECT_EQ(Format(-0.5, "0#"), "-01");
    EXPECT_EQ(Format(0, "#0"), "0");
    EXPECT_EQ(Format(5, "#0"), "5");
    EXPECT_EQ(Format(-0.5, "#0"), "-1");
}

TEST(FormatTest, VersionNumbersPrintAsShopsKnowThem)
{
    const auto version = [](int major, int minor) {
        return "v" + Format(major, "#") + "." + Format(minor, "0#");
    };
    EXPECT_EQ(version(1, 0), "v1.00");
    EXPECT_EQ(version(0, 0), "v.00");
    EXPECT_EQ(version(2, 15), "v2.15");
}

TEST(FormatTest, HoursBetweenTwoReadingsPrintWithTwoDecimals)
{
    const auto hours = [](int minutes) {
        return Format(minutes / 60 + minutes % 60 / 60.0, "###.00");
    };
    EXPECT_EQ(hours(140), "2.33");
    EXPECT_EQ(hours(0), ".00");
    EXPECT_EQ(hours(1), ".02");
    EXPECT_EQ(hours(40), ".67");
    EXPECT_EQ(hours(59), ".98");
    for (int minutes = 0; minutes < 1440; ++minutes) {
        const int hundredths = minutes / 60 * 100 + (10 * (minutes % 60) + 3) / 6;
        ASSERT_EQ(Format(hundredths / 100.0, "###.00"), hours(minutes)) << minutes;
    }
}
