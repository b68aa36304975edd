// SPDX-License-Identifier: Apache-2.0
// Calendar: a month calendar, whose value is a date.
#pragma once

#include "base/Value.h"
#include "platform/controls/Control.h"

namespace platform {

class Calendar : public Control {
public:
    [[nodiscard]] base::Date Value() const { return value_; }
    void SetValue(base::Date value)
    {
        value_ = value;
        Changed();
    }

private:
    base::Date value_;
};

}  // namespace platform
