// SPDX-License-Identifier: Apache-2.0
// FixedFormats: dates and times as a reader in the United States expects them.
#pragma once

#include "platform/SystemFormats.h"

namespace platform {

class FixedFormats : public SystemFormats {
public:
    [[nodiscard]] std::string LongDate(base::Date date) const override;
    [[nodiscard]] std::string ShortDate(base::Date date) const override;
    [[nodiscard]] std::string Time(base::Date date) const override;
};

}  // namespace platform
