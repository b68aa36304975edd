// SPDX-License-Identifier: Apache-2.0
// frmStatusView: the window of the status descriptions on the screen.
#pragma once

#include "app/ui/EventDoor.h"
#include "platform/qt/OwnedDialog.h"

namespace platform::qt {
class GridWidget;
}

namespace lodrin::ui {

// Rule: the close box, and Escape where nothing is being typed, are the Exit button; none of them
//       leaves a typed wording behind that could not be stored.
class frmStatusView : public platform::qt::OwnedDialog {
public:
    // Requires: the form has been made.
    frmStatusView(Shop& shop, EventDoor door, QWidget* owner);

    // Shows it and waits until it is left.
    void Wait();
    void reject() override;

private:
    void BuildGrid();

    Shop& shop_;
    EventDoor door_;
    platform::qt::GridWidget* grid_ = nullptr;
};

}  // namespace lodrin::ui
