// SPDX-License-Identifier: Apache-2.0
// ListWidget: a ListBox on the screen.
#pragma once

#include "platform/controls/ListBox.h"

#include <QListWidget>

#include <functional>

namespace platform::qt {

// Rule: a list stands on no entry until the user or the program chooses one, also when it gets the
//       focus.
class ListWidget : public QListWidget {
public:
    ListWidget(ListBox& list, QWidget* parent);

    // The user wants `entry` (from 0) to be the selected one. When empty, it simply becomes that.
    std::function<void(int entry)> chosen;
    // A double click on an entry, or Enter on the selected one.
    std::function<void()> doubleClicked;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Mirror();
    void Choose(int entry);

    ListBox* list_;
    bool mirroring_ = false;
};

}  // namespace platform::qt
