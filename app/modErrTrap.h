// SPDX-License-Identifier: Apache-2.0
// modErrTrap: the program's entry and the one error trap.
#pragma once

#include <string_view>

namespace lodrin {

struct Shop;

// Brings the program up: one copy only, the date confirmed, splash, main window.
// Location: "Sub modErrTrap!General_Main()".
void Main(Shop& shop);

// Decides by number whether a failure is shown, logged, remembered or ignored; the caller then goes
// on with its next statement. Its own failures (the log cannot be written) leave it as they are.
void ErrTrap(Shop& shop, std::string_view location, int number, std::string_view description);

inline constexpr int kOutOfMemory = 7;

// Whether the trap itself tells the user of a failure of that number, in a box.
[[nodiscard]] bool IsTold(int number);

}  // namespace lodrin
