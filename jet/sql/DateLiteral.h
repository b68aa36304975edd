// SPDX-License-Identifier: Apache-2.0
// DateLiteral: what stands between two # marks, read the same way on every machine.
#pragma once

#include "base/Value.h"

#include <optional>
#include <string_view>

namespace jet::sql {

// The date, the time or both; nothing when the text is none.
//
// Rule: month before day whatever the user's locale; day before month only where nothing else is
//       possible (#21/11/2026#). A year of four digits or above 31 may stand first. The two-digit
//       years 00..29 are 2000 to 2029. A full stop separates nothing. Two numbers are month and
//       day of `today`'s year, or else month and year.
[[nodiscard]] std::optional<base::Date> ReadDateLiteral(std::string_view text, base::Date today);

}  // namespace jet::sql
