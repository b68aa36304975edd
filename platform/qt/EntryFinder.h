// SPDX-License-Identifier: Apache-2.0
// EntryFinder: which entries of a list answer to what is typed.
#pragma once

#include <QStringList>

namespace platform::qt {

// Those in which every typed word begins a word; those that begin with the text come first.
//
//     "1011"          10112  2010 Stellar Pulse EX 4D SED, 10117  2012 Dorado Mesa ...
//     "2012 dorado"   10117  2012 Dorado Mesa SLE 4D UTV
//
// Rule: upper and lower case are alike; no text matches nothing. Asked at every key, of some ten
//       thousand entries, so each is made ready once.
class EntryFinder {
public:
    EntryFinder() = default;
    explicit EntryFinder(QStringList entries);

    [[nodiscard]] const QStringList& Entries() const { return entries_; }
    [[nodiscard]] QStringList Matching(const QString& typed) const;

private:
    QStringList entries_;
    QStringList folded_;  // without case
};

}  // namespace platform::qt
