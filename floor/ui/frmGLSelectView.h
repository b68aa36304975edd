// SPDX-License-Identifier: Apache-2.0
// frmGLSelectView: the dialog for labor type and department on the screen.
#pragma once

#include "app/ui/EventDoor.h"
#include "platform/qt/OwnedDialog.h"

class QBoxLayout;

namespace platform {
class ListBox;
}
namespace platform::qt {
class ListWidget;
}

namespace lodrin::ui {

// Rule: Escape and the close box leave it without a choice; Enter is the confirm button.
class frmGLSelectView : public platform::qt::OwnedDialog {
public:
    frmGLSelectView(Shop& shop, EventDoor door, QWidget* owner);
    ~frmGLSelectView() override;

    // Shows it and waits until it is left.
    void Wait();

protected:
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QBoxLayout* BuildList(platform::ListBox& list, const char* name,
                                        const QString& title);
    [[nodiscard]] QBoxLayout* BuildFooter();
    void Activate();

    Shop& shop_;
    EventDoor door_;
    bool activated_ = false;
};

}  // namespace lodrin::ui
