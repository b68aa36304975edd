// SPDX-License-Identifier: Apache-2.0
// frmDateSelView: the dialog for one date on the screen.
#pragma once

#include "app/ui/EventDoor.h"
#include "platform/qt/OwnedDialog.h"

namespace platform::qt {
class CalendarWidget;
}

namespace lodrin::ui {

// Rule: Escape and the close box are the button Cancel. It keeps its widgets while it is hidden.
class frmDateSelView : public platform::qt::OwnedDialog {
public:
    frmDateSelView(Shop& shop, EventDoor door, QWidget* owner);

    // Shows it and waits until it is hidden.
    void Wait();
    void reject() override;

private:
    Shop& shop_;
    EventDoor door_;
    platform::qt::CalendarWidget* calendar_ = nullptr;
};

}  // namespace lodrin::ui
