// SPDX-License-Identifier: Apache-2.0
// Format: numbers and dates printed through the platform's patterns.
#pragma once

#include "base/Value.h"

#include <string>
#include <string_view>

namespace base {

// The value printed through a number pattern ("#", "0#", "#########", "##.00") or a date pattern
// ("hh:mm AM/PM", "mm/dd/yyyy", "mm/dd/yyyy - hh:mm AMPM", "hh:mm").
//
//     Format(1.0 / 3, "##.00")          // ".33"
//     Format(Date{0.38}, "hh:mm AM/PM") // "09:07 AM"
//
// Rule: decimals round half away from zero on the decimal text, not on the binary value. Null
//       prints nothing; text that is neither number nor date is returned unchanged. "mm" after an
//       hour is minutes, otherwise the month. Separators and AM/PM are the same in every locale,
//       because what is printed here is stored and read again.
[[nodiscard]] std::string Format(const Value& value, std::string_view pattern);

}  // namespace base
