// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/MessageBox.h"

#include "platform/qt/QtText.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>

namespace platform::qt {

namespace {

constexpr int kMargin = 20;

QMessageBox::StandardButtons ButtonsOf(const Box& box)
{
    return box.buttons == Buttons::Ok ? QMessageBox::Ok : QMessageBox::Yes | QMessageBox::No;
}

QMessageBox::Icon IconOf(const Box& box)
{
    return box.icon == Icon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon;
}

}  // namespace

MessageBox::MessageBox(QWidget* owner, const Box& box)
    : QMessageBox(IconOf(box), ToQt(box.title), QString(), ButtonsOf(box), owner),
      mustChoose_(box.buttons == Buttons::YesNo)
{
    setObjectName("MsgBox");
    setTextFormat(Qt::PlainText);
    setText(ToQt(box.text).replace("\r\n", "\n"));
    setDefaultButton(mustChoose_ ? QMessageBox::Yes : QMessageBox::Ok);
    if (mustChoose_) setWindowFlag(Qt::WindowCloseButtonHint, false);
}

Answer MessageBox::Wait()
{
    exec();
    if (!mustChoose_) return Answer::Ok;
    return standardButton(clickedButton()) == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

void MessageBox::reject()
{
    if (!mustChoose_) QMessageBox::reject();
}

void MessageBox::closeEvent(QCloseEvent* event)
{
    if (mustChoose_)
        event->ignore();
    else
        QMessageBox::closeEvent(event);
}

void MessageBox::keyPressEvent(QKeyEvent* event)
{
    if (mustChoose_ && event->matches(QKeySequence::Cancel))
        event->accept();
    else
        QMessageBox::keyPressEvent(event);
}

void MessageBox::showEvent(QShowEvent* event)
{
    // Set here, because the box lays itself out anew whenever its text changes.
    layout()->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout()->activate();
    QMessageBox::showEvent(event);
}

}  // namespace platform::qt
