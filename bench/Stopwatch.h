// SPDX-License-Identifier: Apache-2.0
// Stopwatch: how long this thread needed since the stopwatch was made.
#pragma once

#include <chrono>
#include <cstdint>

namespace bench {

// Rule: the time in which the thread stood in line for a processor does not count; waiting for the
//       disk, for a lock or for sleep does.
class Stopwatch {
public:
    Stopwatch() : stoodInLine_(StoodInLine()), start_(Clock::now()) {}

    [[nodiscard]] double Milliseconds() const
    {
        using Nanoseconds = std::chrono::duration<double, std::nano>;
        const double passed = Nanoseconds(Clock::now() - start_).count();
        return (passed - static_cast<double>(StoodInLine() - stoodInLine_)) / 1e6;
    }

private:
    using Clock = std::chrono::steady_clock;
    // Of this thread so far. Units: nanoseconds; 0 on a system that does not tell.
    [[nodiscard]] static std::int64_t StoodInLine();

    std::int64_t stoodInLine_;
    Clock::time_point start_;
};

}  // namespace bench
