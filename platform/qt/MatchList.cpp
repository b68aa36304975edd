// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/MatchList.h"

#include "platform/qt/Entries.h"

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int kEntriesAtOnce = 8;
constexpr int kMargin = 4;  // to the window's edge

}  // namespace

MatchList::MatchList(QWidget* field) : QListView(field->window()), field_(field)
{
    setObjectName("lstMatches");
    setAccessibleName("lstMatches");
    setAccessibleDescription("Repair orders that match what is typed");
    setFocusPolicy(Qt::NoFocus);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setModel(&entries_);
    OneLineEach(*this);
    connect(this, &QListView::clicked, this, [this](const QModelIndex& at) {
        const QString entry = at.data().toString();
        hide();
        if (picked) picked(entry);
    });
    hide();
}

void MatchList::Offer(const QStringList& entries)
{
    entries_.setStringList(entries);
    setCurrentIndex({});
    if (entries.isEmpty()) return hide();
    Place();
    show();
    raise();
    scrollToTop();
}

// Under its field, or over it where there is more room; to the left as wide as its entries.
void MatchList::Place()
{
    const QWidget& window = *parentWidget();
    const QRect field(field_->mapTo(&window, QPoint(0, 0)), field_->size());
    const int below = window.height() - field.bottom() - kMargin;
    const int above = field.top() - kMargin;
    const int wanted =
        std::min(entries_.rowCount(), kEntriesAtOnce) * sizeHintForRow(0) + 2 * frameWidth();
    const bool under = below >= wanted || below >= above;
    const int height = std::min(wanted, under ? below : above);
    const int width = std::clamp(WidestEntry(*this), field.width(), field.right() + 1 - kMargin);
    setGeometry(field.right() + 1 - width, under ? field.bottom() + 1 : field.top() - height, width,
                height);
}

void MatchList::Step(int by)
{
    const int row = std::clamp(currentIndex().row() + by, 0, entries_.rowCount() - 1);
    setCurrentIndex(entries_.index(row));
}

QString MatchList::Highlighted() const
{
    return isVisible() ? currentIndex().data().toString() : QString();
}

}  // namespace platform::qt
