// SPDX-License-Identifier: Apache-2.0
// Label: a text on a window; also the caption of a button or window, and a status bar's text.
#pragma once

#include "platform/controls/Control.h"

#include <string>
#include <string_view>

namespace platform {

class Label : public Control {
public:
    explicit Label(std::string caption = {}) : caption_(std::move(caption)) {}

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(std::string_view caption)
    {
        caption_ = caption;
        Changed();
    }

private:
    std::string caption_;
};

}  // namespace platform
