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

    void SetEnabled(bool usable)
    {
        enabled = usable;
        Changed();
    }

protected:
    void Changed() const
    {
        if (holds_ > 0) {
            waiting_ = true;
        } else if (changed) {
            changed();
        }
    }

private:
    friend class ChangesHeld;
    mutable int holds_ = 0;
    mutable bool waiting_ = false;
};

// While it lives, the control's `changed` waits; afterwards it is called once if anything changed.
// For filling a list entry by entry without the view drawing each step.
class ChangesHeld {
public:
    explicit ChangesHeld(const Control& control) : control_(control) { ++control_.holds_; }
    ~ChangesHeld()
    {
        if (--control_.holds_ > 0 || !control_.waiting_) return;
        control_.waiting_ = false;
        if (control_.changed) control_.changed();
    }
    ChangesHeld(const ChangesHeld&) = delete;
    ChangesHeld& operator=(const ChangesHeld&) = delete;

private:
    const Control& control_;
};

}  // namespace platform
