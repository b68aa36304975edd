// SPDX-License-Identifier: Apache-2.0
// MessageBox: a box of plain text that answers the way the program's boxes do.
#pragma once

#include "platform/Prompts.h"

#include <QMessageBox>

namespace platform::qt {

// Rule: an OK box closes with Escape, Enter and its close box, all as OK. A Yes/No box can only be
//       left by choosing: Escape does nothing and it has no close box; Y and N work as keys.
class MessageBox : public QMessageBox {
public:
    MessageBox(QWidget* owner, const Box& box);

    // Shows the box and waits. Rule: the pointer is the arrow meanwhile.
    [[nodiscard]] Answer Wait();

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    bool mustChoose_;
};

}  // namespace platform::qt
