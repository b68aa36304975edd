// SPDX-License-Identifier: Apache-2.0
// Timing: how long something takes, and one printed line per case.
#pragma once

#include <functional>
#include <string_view>

namespace bench {

// The middle of `times` runs. Units: milliseconds.
[[nodiscard]] double Milliseconds(int times, const std::function<void()>& work);

// Prints the case, both times and their ratio (below 1: we are faster).
void Report(std::string_view name, double ours, double peers);

}  // namespace bench
