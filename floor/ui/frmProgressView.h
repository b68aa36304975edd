// SPDX-License-Identifier: Apache-2.0
// frmProgressView: the dialog for the progress of a job on the screen.
#pragma once

#include "app/ui/EventDoor.h"
#include "platform/qt/OwnedDialog.h"

class QBoxLayout;
class QPushButton;

namespace platform {
class Label;
}

namespace lodrin::ui {

// Rule: Enter is Okay, Escape is Cancel; the close box is neither.
class frmProgressView : public platform::qt::OwnedDialog {
public:
    frmProgressView(Shop& shop, EventDoor door, QWidget* owner);
    ~frmProgressView() override;

    // Shows it and waits until it is left.
    void Wait();

    // Escape.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] QBoxLayout* BuildList();
    [[nodiscard]] QBoxLayout* BuildButtons();
    [[nodiscard]] QPushButton* MakeButton(platform::Label& label, const char* name,
                                          const EventDoor::Procedure& clicked);

    Shop& shop_;
    EventDoor door_;
};

}  // namespace lodrin::ui
