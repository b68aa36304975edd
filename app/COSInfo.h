// SPDX-License-Identifier: Apache-2.0
// COSInfo: what the program knows of the system it runs on.
#pragma once

#include "platform/Paths.h"

#include <string>
#include <string_view>

namespace lodrin {

// Requires: the paths outlive it.
class COSInfo {
public:
    explicit COSInfo(const platform::Paths& paths) : paths_(paths) {}

    // Without a trailing separator.
    [[nodiscard]] std::string WindowsDirectory() const;

private:
    const platform::Paths& paths_;
};

// The text up to its first NUL character, or all of it.
[[nodiscard]] std::string TrimNulls(std::string_view text);

}  // namespace lodrin
