// SPDX-License-Identifier: Apache-2.0
// MatchList: what a list offers for the text typed so far, shown beneath the field.
#pragma once

#include <QListWidget>
#include <QStringList>

#include <functional>

namespace platform::qt {

// The entries in which every typed word begins a word, those that begin with the text first.
//
//     "1011"          10112  2010 Stellar Pulse EX 4D SED, 10117  2012 Dorado Mesa ...
//     "2012 dorado"   10117  2012 Dorado Mesa SLE 4D UTV
//
// Rule: upper and lower case are alike; no text matches nothing.
[[nodiscard]] QStringList Matching(const QStringList& entries, const QString& typed);

// Rule: it lies over the window's other controls and never takes the keyboard from its field, so
//       what is typed goes on and Enter stays the field's. No entry is highlighted until the user
//       steps to one.
class MatchList : public QListWidget {
public:
    explicit MatchList(QWidget* field);

    // A touched entry.
    std::function<void(const QString& entry)> picked;

    // Shows them; hides itself when there are none.
    void Offer(const QStringList& entries);
    // To the next (1) or the one before (-1).
    void Step(int by);
    // Empty when hidden or none is.
    [[nodiscard]] QString Highlighted() const;

private:
    void Place();

    QWidget* field_;
};

}  // namespace platform::qt
