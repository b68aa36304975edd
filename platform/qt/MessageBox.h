// SPDX-License-Identifier: Apache-2.0
// MessageBox: a box of plain text that answers the way the program's boxes do.
#pragma once

#include "platform/Prompts.h"

#include <QMessageBox>

class QGridLayout;

namespace platform::qt {

// Rule: an OK box closes with Escape, Enter and its close box, all as OK. A Yes/No box can only be
//       left by choosing: Escape does nothing and it has no close box; Y and N work as keys. A text
//       that the screen has no room for is scrolled; the buttons are always there.
class MessageBox : public QMessageBox {
public:
    MessageBox(QWidget* owner, const Box& box);

    // Shows the box and waits. Rule: the pointer is the arrow meanwhile.
    [[nodiscard]] Answer Wait();

    void reject() override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void LayOut();
    [[nodiscard]] bool HasRoom() const;
    void ScrollText();
    [[nodiscard]] QGridLayout* grid() const;

    bool mustChoose_;
    bool scrolled_ = false;
};

}  // namespace platform::qt
