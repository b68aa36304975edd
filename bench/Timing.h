// SPDX-License-Identifier: Apache-2.0
// Timing: how long something takes, and one printed line per case.
#pragma once

#include <functional>
#include <string_view>

namespace bench {

// Units: milliseconds.
struct Times {
    double ours = 0, peers = 0;
};

// The middle of `times` runs. Units: milliseconds.
[[nodiscard]] double Milliseconds(int times, const std::function<void()>& work);

// The middle of `times` runs of each, in turn, so that both meet the same load of the machine.
[[nodiscard]] Times InTurn(int times, const std::function<void()>& ours,
                           const std::function<void()>& peers);

// Prints the case, both times and their ratio (below 1: we are faster).
void Report(std::string_view name, double ours, double peers);

}  // namespace bench
