// SPDX-License-Identifier: Apache-2.0
// MatchList: what a list offers for the text typed so far, shown beneath the field.
#pragma once

#include <QListView>
#include <QStringListModel>

#include <functional>

namespace platform::qt {

// Rule: it lies over the window's other controls and never takes the keyboard from its field, so
//       what is typed goes on and Enter stays the field's. No entry is highlighted until the user
//       steps to one.
class MatchList : public QListView {
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
    QStringListModel entries_;
};

}  // namespace platform::qt
