// SPDX-License-Identifier: Apache-2.0
// HoursTest: decimal hours from two clock readings.
#include "labor/Hours.h"

#include "base/Calendar.h"
#include "base/NumberedError.h"

#include <gtest/gtest.h>
#include <string>

namespace {

base::Value Clock(const char* text)
{
    return base::ReadDate(text).value();
}

std::string Hours(const char* start, const char* end)
{
    return lodrin::HoursBetween(Clock(start), Clock(end), "##.00");
}

TEST(HoursTest, MinutesBecomeHundredthsOfAnHour)
{
    EXPECT_EQ(Hours("08:00 AM", "10:20 AM"), "2.33");
    EXPECT_EQ(Hours("08:00 AM", "08:20 AM"), ".33");
    EXPECT_EQ(Hours("08:00 AM", "08:40 AM"), ".67");
    EXPECT_EQ(Hours("08:00 AM", "08:59 AM"), ".98");
    EXPECT_EQ(Hours("07:00 AM", "03:30 PM"), "8.50");
}

TEST(HoursTest, SameMinuteIsNothingAndOneMinuteIsTwoHundredths)
{
    EXPECT_EQ(Hours("08:00 AM", "08:00 AM"), ".00");
    EXPECT_EQ(Hours("08:00 AM", "08:01 AM"), ".02");
}

TEST(HoursTest, SpanAcrossMidnightReadsAsItsMagnitude)
{
    EXPECT_EQ(Hours("11:00 PM", "01:00 AM"), "22.00");
    EXPECT_EQ(Hours("10:00 PM", "02:00 AM"), "20.00");
}

TEST(HoursTest, EveryPairOfMinutesFollowsTheIntegerRule)
{
    constexpr int kMinutesOfDay = 1440;
    for (int start = 0; start < kMinutesOfDay; start += 7) {
        for (int end = 0; end < kMinutesOfDay; end += 11) {
            const int apart = std::abs(end - start);
            const int hundredths = apart / 60 * 100 + (10 * (apart % 60) + 3) / 6;
            const std::string cents = std::to_string(hundredths % 100);
            const std::string whole = hundredths < 100 ? "" : std::to_string(hundredths / 100);
            EXPECT_EQ(lodrin::HoursBetween(base::Date{start / 1440.0}, base::Date{end / 1440.0},
                                           "###.00"),
                      whole + "." + (cents.size() < 2 ? "0" : "") + cents)
                << start << " to " << end;
        }
    }
}

TEST(HoursTest, MissingReadingIsAnInvalidUseOfNull)
{
    try {
        (void)lodrin::HoursBetween(base::Null{}, Clock("08:00 AM"), "##.00");
        ADD_FAILURE() << "nothing was raised";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 94);
    }
}

}  // namespace
