// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/Entries.h"

#include "platform/qt/QtText.h"

#include <QHelpEvent>
#include <QListView>
#include <QScroller>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

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

// The widths of single letters; those of western tongues are each measured once.
class LetterWidths {
public:
    explicit LetterWidths(const QFontMetrics& metrics) : metrics_(metrics) {}

    // What the letters of a text come to, without regard to their neighbours.
    [[nodiscard]] int Of(const QString& text)
    {
        int width = 0;
        for (const QChar letter : text) {
            if (letter.unicode() >= widths_.size()) {
                width += metrics_.horizontalAdvance(letter);
                continue;
            }
            int& known = widths_[letter.unicode()];
            if (known == 0) known = metrics_.horizontalAdvance(letter);
            width += known;
        }
        return width;
    }

private:
    QFontMetrics metrics_;
    std::array<int, 256> widths_{};
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
    // To measure a text takes long, so only those are measured whose letters are the widest.
    constexpr qsizetype measured = 8;
    LetterWidths letters(list.fontMetrics());
    std::vector<std::pair<int, QString>> entries;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        QString text = list.model()->index(row, list.modelColumn()).data().toString();
        const int width = letters.Of(text);
        entries.emplace_back(width, std::move(text));
    }
    const auto end = entries.begin() + std::min<qsizetype>(measured, std::ssize(entries));
    std::partial_sort(entries.begin(), end, entries.end(),
                      [](const auto& one, const auto& other) { return one.first > other.first; });
    int widest = 0;
    for (auto entry = entries.begin(); entry != end; ++entry)
        widest = std::max(widest, list.fontMetrics().horizontalAdvance(entry->second));
    const QStyle& style = *list.style();
    return widest + 2 * list.frameWidth() + style.pixelMetric(QStyle::PM_ScrollBarExtent) +
           2 * (style.pixelMetric(QStyle::PM_FocusFrameHMargin) + 2);
}

}  // namespace platform::qt
