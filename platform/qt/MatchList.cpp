// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/MatchList.h"

#include "platform/qt/Entries.h"

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int kEntriesAtOnce = 8;
constexpr int kMargin = 4;  // to the window's edge

bool BeginsAWord(const QString& entry, const QString& word)
{
    for (qsizetype at = entry.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = entry.indexOf(word, at + 1, Qt::CaseInsensitive))
        if (at == 0 || !entry[at - 1].isLetterOrNumber()) return true;
    return false;
}

}  // namespace

QStringList Matching(const QStringList& entries, const QString& typed)
{
    const QStringList words = typed.split(' ', Qt::SkipEmptyParts);
    if (words.isEmpty()) return {};
    QStringList beginning, others;
    for (const QString& entry : entries) {
        if (entry.startsWith(typed.trimmed(), Qt::CaseInsensitive))
            beginning << entry;
        else if (std::all_of(words.begin(), words.end(),
                             [&](const QString& word) { return BeginsAWord(entry, word); }))
            others << entry;
    }
    return beginning + others;
}

MatchList::MatchList(QWidget* field) : QListWidget(field->window()), field_(field)
{
    setObjectName("lstMatches");
    setAccessibleName("lstMatches");
    setAccessibleDescription("Repair orders that match what is typed");
    setFocusPolicy(Qt::NoFocus);
    setUniformItemSizes(true);
    OneLineEach(*this);
    connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
        const QString entry = item->text();
        hide();
        if (picked) picked(entry);
    });
    hide();
}

void MatchList::Offer(const QStringList& entries)
{
    clear();
    addItems(entries);
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
    const int wanted = std::min(count(), kEntriesAtOnce) * sizeHintForRow(0) + 2 * frameWidth();
    const bool under = below >= wanted || below >= above;
    const int height = std::min(wanted, under ? below : above);
    const int width = std::clamp(WidestEntry(*this), field.width(), field.right() + 1 - kMargin);
    setGeometry(field.right() + 1 - width, under ? field.bottom() + 1 : field.top() - height, width,
                height);
}

void MatchList::Step(int by)
{
    setCurrentRow(std::clamp(currentRow() + by, 0, count() - 1));
}

QString MatchList::Highlighted() const
{
    return isVisible() && currentItem() != nullptr ? currentItem()->text() : QString();
}

}  // namespace platform::qt
