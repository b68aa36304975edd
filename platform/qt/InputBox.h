// SPDX-License-Identifier: Apache-2.0
// InputBox: the prompt for one line of text.
#pragma once

#include "platform/Prompts.h"

#include <QDialog>

class QLineEdit;

namespace platform::qt {

// Units: at most 254 characters. Rule: what is typed can be read; it can be touched in on a pad of
// keys too. Enter is OK, Escape is Cancel.
class InputBox : public QDialog {
public:
    InputBox(QWidget* owner, const InputPrompt& prompt);

    // Shows the prompt and waits: the text as typed, empty when cancelled.
    [[nodiscard]] QString Wait();

protected:
    // It stands in the middle of the screen's width and a third down its height.
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* text_;
};

}  // namespace platform::qt
