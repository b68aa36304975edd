// SPDX-License-Identifier: Apache-2.0
// frmPreviewView: the print preview's window on the screen.
#pragma once

#include "app/ui/EventDoor.h"

#include <QWidget>

namespace lodrin::ui {

// Rule: it comes up in its owner's place. Closing it, by whatever way, unloads the form; the window
//       is then gone.
class frmPreviewView : public QWidget {
public:
    frmPreviewView(Shop& shop, EventDoor door, QWidget* owner);

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Resized();

    Shop& shop_;
    EventDoor door_;
};

}  // namespace lodrin::ui
