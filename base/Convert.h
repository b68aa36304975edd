// SPDX-License-Identifier: Apache-2.0
// Convert: the platform's conversions between values, numbers and text, and its null arithmetic.
#pragma once

#include "base/Value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

// The text of a value as a cell or `&` shows it: "", "True", "0.33", "3/15/2004 9:05:00 AM".
// Rule: null is the empty text.
[[nodiscard]] std::string TextOf(const Value& value);
// A double with 15 significant digits, "1E+15" from there on, never "-0".
[[nodiscard]] std::string TextOf(double value);
[[nodiscard]] std::string TextOf(std::int32_t value);

// The leading-number parse of the value's text: blanks are skipped anywhere, parsing stops at what
// does not fit, nothing parsed and null are 0. Errors: 6 beyond the range of a double.
[[nodiscard]] double Val(const Value& value);
// Val rounded half to even into 32 bits. Errors: 6.
[[nodiscard]] std::int32_t ValLong(const Value& value);

// The strict conversions. Errors: 13 unsuitable text, 6 overflow, 94 null.
[[nodiscard]] std::int32_t ToLong(const Value& value);
[[nodiscard]] std::int16_t ToInteger(const Value& value);
[[nodiscard]] double ToDouble(const Value& value);
[[nodiscard]] Date ToDate(const Value& value);

// Half-to-even rounding, the platform's rounding everywhere except in Format.
[[nodiscard]] double RoundHalfEven(double value);

// Arithmetic in which null with anything is null. Errors: 13 for text that is no number.
[[nodiscard]] Value Plus(const Value& left, const Value& right);
[[nodiscard]] Value Minus(const Value& left, const Value& right);
[[nodiscard]] Value Times(const Value& left, const Value& right);

// Whether two values differ: numbers by number, text exactly (case counts), a number and a text by
// their kinds. A comparison with null is not a difference.
[[nodiscard]] bool Differs(const Value& left, const Value& right);

}  // namespace base
