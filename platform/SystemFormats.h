// SPDX-License-Identifier: Apache-2.0
// SystemFormats: dates and times the way this machine's user reads them; for display only.
#pragma once

#include "base/Value.h"

#include <string>

namespace platform {

// Rule: nothing printed here is stored or put into SQL (base/Format.h is for that).
class SystemFormats {
public:
    SystemFormats() = default;
    SystemFormats(const SystemFormats&) = delete;
    SystemFormats& operator=(const SystemFormats&) = delete;
    virtual ~SystemFormats() = default;

    [[nodiscard]] virtual std::string
    LongDate(base::Date date) const = 0;  // Monday, January 15, 2024
    [[nodiscard]] virtual std::string ShortDate(base::Date date) const = 0;  // 1/15/2024
    [[nodiscard]] virtual std::string Time(base::Date date) const = 0;       // 5:55:03 PM
};

}  // namespace platform
