// SPDX-License-Identifier: Apache-2.0
// Control: what every control of a window has: whether it can be used, its tip, and who watches it.
#pragma once

#include <functional>
#include <string>

namespace platform {

// Rule: a control is data; the view that shows it sets `changed` and mirrors the rest.
struct Control {
    bool enabled = true;
    std::string tip;
    std::function<void()> changed;  // called after each change; may be empty

protected:
    void Changed() const
    {
        if (changed) changed();
    }
};

}  // namespace platform
