// SPDX-License-Identifier: Apache-2.0
// Clock: the local date and time.
#pragma once

#include "base/Value.h"

namespace platform {

class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    // Local date and time. Units: whole seconds. A procedure that needs it twice reads it once.
    [[nodiscard]] virtual base::Date Now() const = 0;
};

}  // namespace platform
