// SPDX-License-Identifier: Apache-2.0
// Window: the frame of a window: where it stands, and whether it is minimised or maximised.
#pragma once

#include "base/NumberedError.h"
#include "platform/controls/Control.h"

namespace platform {

enum class WindowState { Normal, Minimized, Maximized };

// Units: logical pixels.
struct Place {
    int left = 0, top = 0, width = 0, height = 0;
    friend bool operator==(const Place&, const Place&) = default;
};

class Window : public Control {
public:
    [[nodiscard]] WindowState State() const { return state_; }
    [[nodiscard]] const Place& Where() const { return where_; }
    [[nodiscard]] bool Visible() const { return visible_; }

    void SetState(WindowState state)
    {
        state_ = state;
        Changed();
    }
    // Errors: 384 while it is minimised or maximised.
    void Move(const Place& where)
    {
        if (state_ != WindowState::Normal) throw base::NumberedError(kCannotMove);
        where_ = where;
        Changed();
    }
    void SetVisible(bool visible)
    {
        visible_ = visible;
        Changed();
    }
    // What the view found on the screen; it is not told so again.
    void Found(WindowState state, const Place& where, bool visible)
    {
        state_ = state;
        visible_ = visible;
        if (state == WindowState::Normal) where_ = where;
    }

private:
    static constexpr int kCannotMove = 384;
    WindowState state_ = WindowState::Normal;
    Place where_;
    bool visible_ = false;
};

}  // namespace platform
