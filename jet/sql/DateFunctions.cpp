// SPDX-License-Identifier: Apache-2.0
// The functions on dates and times.
#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/Functions.h"

#include <array>
#include <cmath>

namespace jet::sql {

namespace {

using base::Date;
using base::DateParts;
using base::NumberedError;
using base::Value;

constexpr double kFirstDay = -657434;  // 1 January 100
constexpr double kLastDay = 2958466;   // the day after 31 December 9999

Date InRange(double days)
{
    if (!(days >= kFirstDay && days < kLastDay)) throw NumberedError(5);
    return Date{days};
}

DateParts Parts(const Value& value)
{
    return base::PartsOf(InRange(base::ToDate(value).days));
}

Value Now(Arguments, const Environment& environment)
{
    return environment.now();
}

Value Today(Arguments, const Environment& environment)
{
    return base::DatePartOf(environment.now());
}

Value TimeOfDay(Arguments, const Environment& environment)
{
    return base::TimePartOf(environment.now());
}

Value Year(Arguments a, const Environment&)
{
    return std::int32_t{Parts(a[0]).year};
}

Value Month(Arguments a, const Environment&)
{
    return std::int32_t{Parts(a[0]).month};
}

Value Day(Arguments a, const Environment&)
{
    return std::int32_t{Parts(a[0]).day};
}

Value Hour(Arguments a, const Environment&)
{
    return std::int32_t{Parts(a[0]).hour};
}

Value Minute(Arguments a, const Environment&)
{
    return std::int32_t{Parts(a[0]).minute};
}

Value Second(Arguments a, const Environment&)
{
    return std::int32_t{Parts(a[0]).second};
}

// Sunday = 1, unless `firstDay` (1..7) says which day is.
int WeekdayFrom(Date date, int firstDay)
{
    const int sundayFirst = base::WeekdayOf(date) % 7 + 1;
    return (sundayFirst - firstDay + 7) % 7 + 1;
}

Value Weekday(Arguments a, const Environment&)
{
    const long firstDay = a.size() == 2 ? base::ToLong(a[1]) : 1;
    if (firstDay < 1 || firstDay > 7) throw NumberedError(5);
    return std::int32_t{WeekdayFrom(InRange(base::ToDate(a[0]).days), static_cast<int>(firstDay))};
}

// Months and days beyond their range carry over.
Date Serial(long year, long month, long day)
{
    if (year >= 0 && year < 30) year += 2000;
    if (year >= 30 && year < 100) year += 1900;
    const long months = year * 12 + month - 1;
    const long fullYear = months >= 0 ? months / 12 : (months - 11) / 12;
    if (fullYear < 100 || fullYear > 9999) throw NumberedError(5);
    const int inYear = static_cast<int>(months - fullYear * 12) + 1;
    const Date first = base::DateFrom({static_cast<int>(fullYear), inYear, 1, 0, 0, 0});
    return InRange(first.days + static_cast<double>(day - 1));
}

Value DateSerial(Arguments a, const Environment&)
{
    return Serial(base::ToInteger(a[0]), base::ToInteger(a[1]), base::ToInteger(a[2]));
}

Value TimeSerial(Arguments a, const Environment&)
{
    const double seconds =
        base::ToInteger(a[0]) * 3600.0 + base::ToInteger(a[1]) * 60.0 + base::ToInteger(a[2]);
    return Date{seconds / 86400};
}

Value DateValue(Arguments a, const Environment&)
{
    return base::DatePartOf(InRange(base::ToDate(a[0]).days));
}

Value TimeValue(Arguments a, const Environment&)
{
    return base::TimePartOf(InRange(base::ToDate(a[0]).days));
}

Value AsDate(Arguments a, const Environment&)
{
    return InRange(base::ToDate(a[0]).days);
}

Value IsDate(Arguments a, const Environment&)
{
    if (const auto* const text = a[0].As<std::string>()) return base::ReadDate(*text).has_value();
    return a[0].IsDate();
}

int DaysIn(int year, int month)
{
    int day = 31;
    while (!base::IsCalendarDate(year, month, day))
        --day;
    return day;
}

// The same day of another month, or that month's last.
Date AddMonths(Date date, long count)
{
    const DateParts parts = base::PartsOf(date);
    const long months = parts.year * 12L + parts.month - 1 + count;
    const int year = static_cast<int>(months / 12);
    if (months < 0 || year < 100 || year > 9999) throw NumberedError(5);
    DateParts moved = parts;
    moved.year = year;
    moved.month = static_cast<int>(months % 12) + 1;
    moved.day = std::min(parts.day, DaysIn(moved.year, moved.month));
    return base::DateFrom(moved);
}

// Whole units as a number that grows by one at each boundary: what DateDiff subtracts.
double BoundariesBefore(std::string_view unit, Date date)
{
    const DateParts parts = base::PartsOf(date);
    const double day = std::floor(base::DatePartOf(date).days);
    if (base::SameName(unit, "yyyy")) return parts.year;
    if (base::SameName(unit, "q")) return parts.year * 4.0 + (parts.month - 1) / 3;
    if (base::SameName(unit, "m")) return parts.year * 12.0 + parts.month;
    if (base::SameName(unit, "d") || base::SameName(unit, "y")) return day;
    if (base::SameName(unit, "ww")) return std::floor((day - 1) / 7);
    if (base::SameName(unit, "h")) return day * 24 + parts.hour;
    if (base::SameName(unit, "n")) return (day * 24 + parts.hour) * 60 + parts.minute;
    if (base::SameName(unit, "s"))
        return ((day * 24 + parts.hour) * 60 + parts.minute) * 60 + parts.second;
    throw NumberedError(5);
}

Value DateDiff(Arguments a, const Environment&)
{
    const std::string unit = base::TextOf(a[0]);
    const Date from = InRange(base::ToDate(a[1]).days);
    const Date to = InRange(base::ToDate(a[2]).days);
    if (base::SameName(unit, "w"))
        return base::ToLong(
            std::trunc((BoundariesBefore("d", to) - BoundariesBefore("d", from)) / 7));
    return base::ToLong(BoundariesBefore(unit, to) - BoundariesBefore(unit, from));
}

// Seconds in one of the units that have a fixed length; 0 for the others.
double SecondsIn(std::string_view unit)
{
    if (base::SameName(unit, "d") || base::SameName(unit, "y") || base::SameName(unit, "w"))
        return 86400;
    if (base::SameName(unit, "ww")) return 7 * 86400;
    if (base::SameName(unit, "h")) return 3600;
    if (base::SameName(unit, "n")) return 60;
    return base::SameName(unit, "s") ? 1 : 0;
}

Value DateAdd(Arguments a, const Environment&)
{
    const std::string unit = base::TextOf(a[0]);
    const long count = base::ToLong(a[1]);
    const Date date = InRange(base::ToDate(a[2]).days);
    if (const double seconds = SecondsIn(unit); seconds != 0)
        return InRange(date.days + static_cast<double>(count) * seconds / 86400);
    if (base::SameName(unit, "yyyy")) return AddMonths(date, count * 12);
    if (base::SameName(unit, "q")) return AddMonths(date, count * 3);
    if (base::SameName(unit, "m")) return AddMonths(date, count);
    throw NumberedError(5);
}

Value DatePart(Arguments a, const Environment& environment)
{
    const std::string unit = base::TextOf(a[0]);
    const Date date = InRange(base::ToDate(a[1]).days);
    const DateParts parts = base::PartsOf(date);
    const Arguments argument = a.subspan(1, 1);
    if (base::SameName(unit, "yyyy")) return std::int32_t{parts.year};
    if (base::SameName(unit, "q")) return std::int32_t{(parts.month - 1) / 3 + 1};
    if (base::SameName(unit, "m")) return std::int32_t{parts.month};
    if (base::SameName(unit, "d")) return std::int32_t{parts.day};
    if (base::SameName(unit, "w")) return Weekday(argument, environment);
    if (base::SameName(unit, "h")) return std::int32_t{parts.hour};
    if (base::SameName(unit, "n")) return std::int32_t{parts.minute};
    if (base::SameName(unit, "s")) return std::int32_t{parts.second};
    const Date newYear = base::DateFrom({parts.year, 1, 1, 0, 0, 0});
    const auto days = static_cast<std::int32_t>(base::DatePartOf(date).days - newYear.days);
    if (base::SameName(unit, "y")) return days + 1;
    if (base::SameName(unit, "ww")) return (days + WeekdayFrom(newYear, 1) - 1) / 7 + 1;
    throw NumberedError(5);
}

constexpr std::array<FunctionInfo, 20> kFunctions{{
    {"Now", 0, 0, ValueKind::Date, Now},
    {"Date", 0, 0, ValueKind::Date, Today},
    {"Time", 0, 0, ValueKind::Date, TimeOfDay},
    {"Year", 1, 1, ValueKind::Number, Year},
    {"Month", 1, 1, ValueKind::Number, Month},
    {"Day", 1, 1, ValueKind::Number, Day},
    {"Hour", 1, 1, ValueKind::Number, Hour},
    {"Minute", 1, 1, ValueKind::Number, Minute},
    {"Second", 1, 1, ValueKind::Number, Second},
    {"Weekday", 1, 2, ValueKind::Number, Weekday},
    {"DateSerial", 3, 3, ValueKind::Date, DateSerial},
    {"TimeSerial", 3, 3, ValueKind::Date, TimeSerial},
    {"DateValue", 1, 1, ValueKind::Date, DateValue},
    {"TimeValue", 1, 1, ValueKind::Date, TimeValue},
    {"CDate", 1, 1, ValueKind::Date, AsDate},
    {"CVDate", 1, 1, ValueKind::Date, AsDate},
    {"IsDate", 1, 1, ValueKind::Boolean, IsDate, OnNull::IsCalled},
    {"DateDiff", 3, 3, ValueKind::Number, DateDiff},
    {"DateAdd", 3, 3, ValueKind::Date, DateAdd},
    {"DatePart", 2, 2, ValueKind::Number, DatePart},
}};

}  // namespace

std::span<const FunctionInfo> DateFunctions()
{
    return kFunctions;
}

}  // namespace jet::sql
