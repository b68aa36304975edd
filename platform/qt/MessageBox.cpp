// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/MessageBox.h"

#include "platform/qt/Placing.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ScrollPage.h"
#include "platform/qt/ShopStyle.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int kBesideIcon = 14;      // that Qt leaves, whether there is an icon or not
constexpr int kScrolledWidth = 640;  // of a box with more text than fits
constexpr int kBesideBar = 8;        // between that text and its scroll bar

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

// A box whose text is scrolled has the size that the screen allows, not the one its text asks for.
bool MessageBox::event(QEvent* event)
{
    if (scrolled_ && event->type() == QEvent::LayoutRequest) return QDialog::event(event);
    return QMessageBox::event(event);
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
    LayOut();
    QMessageBox::showEvent(event);
    if (!HasRoom()) ScrollText();
    StandOverOwner(*this);
}

// When it is shown, because the box lays itself out anew whenever its text changes.
void MessageBox::LayOut()
{
    // Without an icon there still is the blank beside it.
    const int blank = icon() == NoIcon ? kBesideIcon + std::max(0, grid()->horizontalSpacing()) : 0;
    layout()->setContentsMargins(std::max(0, kDialogMargin - blank), kDialogMargin, kDialogMargin,
                                 kDialogMargin);
    layout()->activate();
}

bool MessageBox::HasRoom() const
{
    const int needed = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width())
                                                     : layout()->totalMinimumSize().height();
    return needed <= height() && WithinScreen(*this, size()) == size();
}

void MessageBox::ScrollText()
{
    auto* text = findChild<QLabel*>("qt_msgbox_label");
    const int place = layout()->indexOf(text);
    if (text == nullptr || place < 0) return;
    int row = 0, column = 0, rows = 0, columns = 0;
    grid()->getItemPosition(place, &row, &column, &rows, &columns);
    scrolled_ = true;
    layout()->removeWidget(text);
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    text->setContentsMargins(0, 0, kBesideBar, 0);
    auto* page = new ScrollPage(text, this);
    page->setObjectName("scroll");
    page->setFocusPolicy(Qt::StrongFocus);
    page->setAccessibleName("Text of the message");
    grid()->addWidget(page, row, column, rows, columns);
    page->show();
    setFixedSize(WithinScreen(*this, {kScrolledWidth, QWIDGETSIZE_MAX}));
    layout()->activate();
    // No higher than its text, and no line is cut through at the lower edge.
    const int line = text->fontMetrics().lineSpacing();
    const int lines = std::min(page->height() / line, text->heightForWidth(page->width()) / line);
    setFixedHeight(height() - page->height() + lines * line);
}

QGridLayout* MessageBox::grid() const
{
    return static_cast<QGridLayout*>(layout());
}

}  // namespace platform::qt
