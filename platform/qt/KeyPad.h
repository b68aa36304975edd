// SPDX-License-Identifier: Apache-2.0
// KeyPad: keys on the screen that type into a line of text, for a screen without a keyboard.
#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace platform::qt {

// Rule: digits first, letters on a second page. The line keeps the keyboard while keys are touched,
//       so that both can be used in turn. Requires: the line outlives it.
class KeyPad : public QWidget {
public:
    KeyPad(QLineEdit* line, QWidget* parent);

private:
    [[nodiscard]] QWidget* Digits();
    [[nodiscard]] QWidget* Letters();
    [[nodiscard]] QPushButton* Key(const QString& caption, QWidget* page);
    // Types its caption.
    [[nodiscard]] QPushButton* TypingKey(const QString& caption, QWidget* page);
    // Shows the other page.
    [[nodiscard]] QPushButton* TurningKey(const QString& caption, QWidget* page, int to);
    [[nodiscard]] QPushButton* ErasingKey(QWidget* page);
    void Shift(bool capitals);

    QLineEdit* line_;
    QStackedWidget* pages_;
};

}  // namespace platform::qt
