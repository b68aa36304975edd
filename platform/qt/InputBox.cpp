// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/InputBox.h"

#include "platform/qt/KeyPad.h"
#include "platform/qt/Placing.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ScrollPage.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int kLongestInput = 254;
constexpr int kNarrowest = 380;

}  // namespace

InputBox::InputBox(QWidget* owner, const InputPrompt& prompt)
    : QDialog(owner), text_(new QLineEdit(this))
{
    setObjectName("InputBox");
    setWindowTitle(ToQt(prompt.title));

    auto* label = new QLabel(this);
    label->setObjectName("lblPrompt");
    label->setTextFormat(Qt::PlainText);
    label->setText(ToQt(prompt.text));
    label->setBuddy(text_);

    text_->setObjectName("txtInput");
    text_->setAccessibleName("txtInput");
    text_->setAccessibleDescription(label->text());
    text_->setTextMargins(6, 0, 6, 0);
    text_->setMaxLength(kLongestInput);
    text_->setInputMethodHints(Qt::ImhPreferNumbers | Qt::ImhNoPredictiveText |
                               Qt::ImhNoAutoUppercase);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName("buttons");
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(12);
    column->addWidget(label);
    column->addWidget(text_);
    column->addWidget(new ScrollPage(new KeyPad(text_, this), this), 1);
    column->addSpacing(8);
    column->addWidget(buttons);
    resize(WithinScreen(*this, sizeHint().expandedTo({kNarrowest, 0})));
}

QString InputBox::Wait()
{
    return exec() == QDialog::Accepted ? text_->text() : QString();
}

void InputBox::showEvent(QShowEvent* event)
{
    const QRect free = screen()->availableGeometry();
    move(free.left() + (free.width() - width()) / 2,
         free.top() + std::max(0, free.height() - height()) / 3);
    QDialog::showEvent(event);
    text_->setFocus();
}

}  // namespace platform::qt
