// SPDX-License-Identifier: Apache-2.0
// QtEvents: lets windows repaint while a procedure runs.
#pragma once

#include "platform/Desktop.h"

namespace platform::qt {

class QtEvents : public Events {
public:
    // Rule: clicks and keys stay queued until the procedure is over.
    void LetPendingRun() override;
};

}  // namespace platform::qt
