// SPDX-License-Identifier: Apache-2.0
// ReadNumber: the strict and the lenient reading of a number from text.
#pragma once

#include <string_view>

namespace base {

// The number that the whole text spells: blanks around it, a sign before or after, parentheses for
// negative, one "$", commas between digits, an exponent, "&H" and "&O" are understood.
//
//     ReadNumber(" $1,234.50 ")  // 1234.5
//     ReadNumber("(5)")          // -5
//
// Errors: 13 when the text is no number, 6 beyond the range of a double.
[[nodiscard]] double ReadNumber(std::string_view text);

// The number the text begins with, blanks skipped anywhere ("1 6 15 198th St" is 1615198); 0 when
// it begins with none. "D" stands for an exponent too. Errors: 6 beyond the range of a double.
[[nodiscard]] double ReadLeadingNumber(std::string_view text);

}  // namespace base
