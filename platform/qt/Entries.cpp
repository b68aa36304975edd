// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/Entries.h"

#include "platform/qt/QtText.h"

#include <QHelpEvent>
#include <QListView>
#include <QScroller>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace platform::qt {

namespace {

class Entry : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        const QString text = index.data().toString();
        const bool cut = QStyledItemDelegate::sizeHint(option, index).width() > option.rect.width();
        QToolTip::showText(event->globalPos(), cut ? PlainTip(text) : QString(), view);
        return true;
    }
};

}  // namespace

void OneLineEach(QListView& list)
{
    list.setItemDelegate(new Entry(&list));
    list.setTextElideMode(Qt::ElideRight);
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list.setAlternatingRowColors(true);
    QScroller::grabGesture(list.viewport(), QScroller::TouchGesture);
}

int WidestEntry(const QListView& list)
{
    int widest = 0;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        const QString text = list.model()->index(row, list.modelColumn()).data().toString();
        widest = std::max(widest, list.fontMetrics().horizontalAdvance(text));
    }
    const QStyle& style = *list.style();
    return widest + 2 * list.frameWidth() + style.pixelMetric(QStyle::PM_ScrollBarExtent) +
           2 * (style.pixelMetric(QStyle::PM_FocusFrameHMargin) + 2);
}

}  // namespace platform::qt
