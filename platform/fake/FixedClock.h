// SPDX-License-Identifier: Apache-2.0
// FixedClock: a clock that stands still until it is set.
#pragma once

#include "platform/Clock.h"

#include <cmath>

namespace platform {

class FixedClock : public Clock {
public:
    // Noon of March 15, 2004.
    explicit FixedClock(base::Date now = {38061.5}) : now_(now) {}

    [[nodiscard]] base::Date Now() const override { return now_; }
    void Set(base::Date now) { now_ = now; }
    // Units: seconds. Rule: the reading stays on a whole second.
    void Advance(int seconds)
    {
        constexpr double kSecondsOfDay = 86400;
        now_ = {(std::round(now_.days * kSecondsOfDay) + seconds) / kSecondsOfDay};
    }

private:
    base::Date now_;
};

}  // namespace platform
