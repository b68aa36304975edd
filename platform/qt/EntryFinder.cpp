// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/EntryFinder.h"

#include <algorithm>
#include <utility>

namespace platform::qt {

namespace {

bool BeginsAWord(const QString& entry, const QString& word)
{
    for (qsizetype at = entry.indexOf(word); at >= 0; at = entry.indexOf(word, at + 1))
        if (at == 0 || !entry[at - 1].isLetterOrNumber()) return true;
    return false;
}

}  // namespace

EntryFinder::EntryFinder(QStringList entries) : entries_(std::move(entries))
{
    folded_.reserve(entries_.size());
    for (const QString& entry : std::as_const(entries_))
        folded_ << entry.toCaseFolded();
}

QStringList EntryFinder::Matching(const QString& typed) const
{
    const QString text = typed.trimmed().toCaseFolded();
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    if (words.isEmpty()) return {};
    QStringList beginning, others;
    for (qsizetype i = 0; i < entries_.size(); ++i) {
        const QString& entry = folded_[i];
        if (entry.startsWith(text))
            beginning << entries_[i];
        else if (std::all_of(words.begin(), words.end(),
                             [&](const QString& word) { return BeginsAWord(entry, word); }))
            others << entries_[i];
    }
    return beginning + others;
}

}  // namespace platform::qt
