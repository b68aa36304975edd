// SPDX-License-Identifier: Apache-2.0
// frmProcMsgView: the processing message on the screen.
#pragma once

#include <QWidget>

namespace lodrin {
struct Shop;
}

namespace lodrin::ui {

// Rule: each step's text is on the screen before the step begins, although the program is busy.
class frmProcMsgView : public QWidget {
public:
    frmProcMsgView(Shop& shop, QWidget* owner);

protected:
    void showEvent(QShowEvent* event) override;
};

}  // namespace lodrin::ui
