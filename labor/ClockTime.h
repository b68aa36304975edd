// SPDX-License-Identifier: Apache-2.0
// ClockTime: how the clock stores and shows a time of day, to the minute and without a date, and a
// day.
#pragma once

namespace lodrin {

// Patterns of base::Format.
inline constexpr const char* kClockTime = "hh:mm AM/PM";
inline constexpr const char* kClockDay = "mm/dd/yyyy";

// The minute in which a day is over that nobody has ended.
inline constexpr const char* kLastMinute = "11:59 PM";

}  // namespace lodrin
