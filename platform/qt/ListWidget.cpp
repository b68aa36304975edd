// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/ListWidget.h"

#include "platform/qt/Entries.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/QtText.h"

#include <QKeyEvent>
#include <QTimer>

namespace platform::qt {

ListWidget::ListWidget(ListBox& list, QWidget* parent) : QListWidget(parent), list_(&list)
{
    setSelectionMode(SingleSelection);
    setUniformItemSizes(true);
    setTabKeyNavigation(false);
    OneLineEach(*this);
    connect(this, &QListWidget::currentRowChanged, this, &ListWidget::Choose);
    // Not itemActivated: it would double the double click.
    connect(this, &QListWidget::itemDoubleClicked, this, [this] {
        if (doubleClicked) doubleClicked();
    });
    Follow(list, this, [this] { Mirror(); });
}

void ListWidget::Mirror()
{
    mirroring_ = true;
    while (count() > list_->ListCount())
        delete takeItem(count() - 1);
    for (int entry = 0; entry < list_->ListCount(); ++entry) {
        const QString text = ToQt(list_->List(entry));
        if (entry == count())
            addItem(text);
        else if (item(entry)->text() != text)
            item(entry)->setText(text);
    }
    // Also said when there is none: a view that was never told chooses by itself.
    if (list_->ListIndex() < 0) {
        setCurrentIndex({});
        clearSelection();
    } else {
        setCurrentRow(list_->ListIndex());
    }
    mirroring_ = false;
}

void ListWidget::Choose(int entry)
{
    if (mirroring_ || entry < 0) return;
    if (chosen)
        chosen(entry);
    else
        list_->SetListIndex(entry);
    if (list_->ListIndex() != entry) QTimer::singleShot(0, this, [this] { Mirror(); });
}

void ListWidget::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !doubleClicked) return QListWidget::keyPressEvent(event);
    event->accept();
    if (!event->isAutoRepeat() && currentItem() != nullptr) doubleClicked();
}

void ListWidget::focusInEvent(QFocusEvent* event)
{
    QListWidget::focusInEvent(event);
    update();
}

void ListWidget::focusOutEvent(QFocusEvent* event)
{
    QListWidget::focusOutEvent(event);
    update();
}

}  // namespace platform::qt
