// SPDX-License-Identifier: Apache-2.0
#include "base/Calendar.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace base {

namespace {

constexpr int kSecondsPerDay = 86400;
constexpr std::int64_t kFirstDay = -657434;  // 100-01-01
constexpr std::int64_t kLastDay = 2958465;   // 9999-12-31

// A date as a whole day number and the seconds since its midnight.
struct DayAndSecond {
    std::int64_t day;
    int second;
};

DayAndSecond Split(Date date)
{
    if (!(date.days > static_cast<double>(kFirstDay))) return {kFirstDay, 0};
    if (!(date.days < static_cast<double>(kLastDay + 1))) return {kLastDay, kSecondsPerDay - 1};
    const double whole = std::trunc(date.days);
    const double fraction = std::abs(date.days - whole);
    const auto day = static_cast<std::int64_t>(whole);
    const int second = static_cast<int>(std::floor(fraction * kSecondsPerDay + 0.5));
    if (second < kSecondsPerDay) return {day, second};
    return day == kLastDay ? DayAndSecond{day, kSecondsPerDay - 1} : DayAndSecond{day + 1, 0};
}

Date Join(DayAndSecond parts)
{
    const double time = static_cast<double>(parts.second) / kSecondsPerDay;
    const auto day = static_cast<double>(parts.day);
    return Date{parts.day < 0 ? day - time : day + time};
}

constexpr bool IsLeapYear(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

constexpr int DaysInMonth(int year, int month)
{
    constexpr std::array<int, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

// Days from 1 January of year 1 to 1 January of `year`.
constexpr std::int64_t DaysBeforeYear(int year)
{
    const std::int64_t past = year - 1;
    return past * 365 + past / 4 - past / 100 + past / 400;
}

constexpr std::int64_t kDayZero = DaysBeforeYear(1899) + 363;  // 1899-12-30

std::int64_t DayNumber(int year, int month, int day)
{
    std::int64_t number = DaysBeforeYear(year) - kDayZero + day - 1;
    for (int past = 1; past < month; ++past)
        number += DaysInMonth(year, past);
    return number;
}

void SetCalendarDay(DateParts& parts, std::int64_t dayNumber)
{
    const std::int64_t sinceYearOne = dayNumber + kDayZero;
    parts.year = static_cast<int>(sinceYearOne / 366) + 1;
    while (DaysBeforeYear(parts.year + 1) <= sinceYearOne)
        ++parts.year;
    parts.day = static_cast<int>(sinceYearOne - DaysBeforeYear(parts.year)) + 1;
    parts.month = 1;
    while (parts.day > DaysInMonth(parts.year, parts.month))
        parts.day -= DaysInMonth(parts.year, parts.month++);
}

std::int64_t MinuteNumber(Date date)
{
    const DayAndSecond parts = Split(date);
    return parts.day * 1440 + parts.second / 60;
}

}  // namespace

DateParts PartsOf(Date date)
{
    const DayAndSecond split = Split(date);
    DateParts parts;
    SetCalendarDay(parts, split.day);
    parts.hour = split.second / 3600;
    parts.minute = split.second / 60 % 60;
    parts.second = split.second % 60;
    return parts;
}

Date DateFrom(const DateParts& parts)
{
    return Join({DayNumber(parts.year, parts.month, parts.day),
                 parts.hour * 3600 + parts.minute * 60 + parts.second});
}

bool IsCalendarDate(int year, int month, int day)
{
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= DaysInMonth(year, month);
}

int WeekdayOf(Date date)
{
    const std::int64_t sinceMonday = (Split(date).day - kFirstDay + 4) % 7;
    return static_cast<int>(sinceMonday) + 1;
}

Date DatePartOf(Date date)
{
    return Join({Split(date).day, 0});
}

Date TimePartOf(Date date)
{
    return Join({0, Split(date).second});
}

int MinutesBetween(Date from, Date to)
{
    return static_cast<int>(MinuteNumber(to) - MinuteNumber(from));
}

std::string TextOf(Date date)
{
    const DateParts parts = PartsOf(date);
    const DayAndSecond split = Split(date);
    std::array<char, 48> day{};
    std::array<char, 48> time{};
    std::snprintf(day.data(), day.size(), "%d/%d/%d", parts.month, parts.day, parts.year);
    std::snprintf(time.data(), time.size(), "%d:%02d:%02d %s", (parts.hour + 11) % 12 + 1,
                  parts.minute, parts.second, parts.hour < 12 ? "AM" : "PM");
    if (split.day == 0) return time.data();
    if (split.second == 0) return day.data();
    return std::string(day.data()) + " " + time.data();
}

}  // namespace base
