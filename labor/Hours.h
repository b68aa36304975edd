// SPDX-License-Identifier: Apache-2.0
// Hours: how long a job or a day lasted, from its two clock readings.
#pragma once

#include "base/Value.h"

#include <string>
#include <string_view>

namespace lodrin {

// Decimal hours from one clock reading to another, printed through `pattern` ("##.00", "###.00").
//
// Units:  both readings are times of day with minute resolution; the text is hours, two decimals.
// Rule:   only the time of day of the difference counts, and its magnitude: 11:00 PM to 1:00 AM
//         is 22.00.
// Errors: 94 or 13 when a reading holds no date, 5 when the difference is empty.
// Source: the shop's rule for jobs, days and carried-over days alike.
[[nodiscard]] std::string HoursBetween(const base::Value& start, const base::Value& end,
                                       std::string_view pattern);

}  // namespace lodrin
