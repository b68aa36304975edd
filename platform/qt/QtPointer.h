// SPDX-License-Identifier: Apache-2.0
// QtPointer: the hourglass as the application's one override cursor.
#pragma once

#include "platform/Desktop.h"

namespace platform::qt {

class QtPointer : public Pointer {
public:
    void Hourglass() override;
    void Default() override;
};

}  // namespace platform::qt
