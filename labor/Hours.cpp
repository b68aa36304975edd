// SPDX-License-Identifier: Apache-2.0
#include "labor/Hours.h"

#include "base/Convert.h"
#include "base/Format.h"
#include "base/Text.h"

namespace lodrin {

std::string HoursBetween(const base::Value& start, const base::Value& end, std::string_view pattern)
{
    constexpr double kMinutesOfHour = 60;
    // The difference is read as a clock time, so a day's length or more wraps around.
    const base::Date difference{base::ToDate(end).days - base::ToDate(start).days};
    const std::string clock = base::Format(difference, "hh:mm");
    const long colon = base::InStr(clock, ":");
    const base::Value hours = base::Left(clock, colon - 1);
    const base::Value minutes = base::Mid(clock, colon + 1);
    const double length = base::Val(hours) + base::Val(minutes) / kMinutesOfHour;
    return base::Format(base::TextOf(length), pattern);
}

}  // namespace lodrin
