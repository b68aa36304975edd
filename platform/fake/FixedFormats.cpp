// SPDX-License-Identifier: Apache-2.0
#include "platform/fake/FixedFormats.h"

#include "base/Calendar.h"

#include <array>
#include <cstddef>

namespace platform {

namespace {

constexpr std::array<const char*, 7> kWeekdays{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                               "Friday", "Saturday", "Sunday"};
constexpr std::array<const char*, 12> kMonths{"January",   "February", "March",    "April",
                                              "May",       "June",     "July",     "August",
                                              "September", "October",  "November", "December"};

std::string TwoDigits(int number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

std::string FixedFormats::LongDate(base::Date date) const
{
    const base::DateParts parts = base::PartsOf(date);
    return std::string(kWeekdays[static_cast<std::size_t>(base::WeekdayOf(date) - 1)]) + ", " +
           kMonths[static_cast<std::size_t>(parts.month - 1)] + " " + std::to_string(parts.day) +
           ", " + std::to_string(parts.year);
}

std::string FixedFormats::ShortDate(base::Date date) const
{
    const base::DateParts parts = base::PartsOf(date);
    return std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" +
           std::to_string(parts.year);
}

std::string FixedFormats::Time(base::Date date) const
{
    const base::DateParts parts = base::PartsOf(date);
    const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
    return std::to_string(hour) + ":" + TwoDigits(parts.minute) + ":" + TwoDigits(parts.second) +
           (parts.hour < 12 ? " AM" : " PM");
}

}  // namespace platform
