// SPDX-License-Identifier: Apache-2.0
// Calendar: dates as day numbers, taken apart, put together, read from text and written as text.
#pragma once

#include "base/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace base {

// A date and time taken apart. Units: month and day from 1; hour 0..23.
struct DateParts {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
    friend bool operator==(const DateParts&, const DateParts&) = default;
};

// Rounded to the nearest second first, so that 10:20 - 8:00 reads 02:20. Rule: a number outside the
// years 100 to 9999 counts as the nearest date inside.
[[nodiscard]] DateParts PartsOf(Date date);
// Requires: a valid calendar date between the years 100 and 9999.
[[nodiscard]] Date DateFrom(const DateParts& parts);
[[nodiscard]] bool IsCalendarDate(int year, int month, int day);
// Monday = 1 ... Sunday = 7.
[[nodiscard]] int WeekdayOf(Date date);

// The date without its time, and the time without its date.
[[nodiscard]] Date DatePartOf(Date date);
[[nodiscard]] Date TimePartOf(Date date);

// Minute boundaries crossed from `from` to `to`; seconds are dropped, not rounded.
[[nodiscard]] int MinutesBetween(Date from, Date to);

// Reads a date, a time or both, in month/day/year order ("03/15/2004", "9:05 AM",
// "3/15/2004 9:05:00 AM", "2004-03-15", "15 March 2004"); nothing when the text is none.
// Rule: the two-digit years 00..29 are 2000 to 2029.
[[nodiscard]] std::optional<Date> ReadDate(std::string_view text);

// "3/15/2004", "9:05:00 AM" or "3/15/2004 9:05:00 AM", whatever parts the date has.
[[nodiscard]] std::string TextOf(Date date);

}  // namespace base
