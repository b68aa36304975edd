// SPDX-License-Identifier: Apache-2.0
// QtClock: the machine's local date and time.
#pragma once

#include "platform/Clock.h"

namespace platform::qt {

class QtClock : public Clock {
public:
    [[nodiscard]] base::Date Now() const override;
};

}  // namespace platform::qt
