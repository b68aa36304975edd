// SPDX-License-Identifier: Apache-2.0
// QtClipboard: the desktop's clipboard.
#pragma once

#include "platform/Desktop.h"

namespace platform::qt {

class QtClipboard : public Clipboard {
public:
    void Clear() override;
    void SetText(std::string_view text) override;
};

}  // namespace platform::qt
