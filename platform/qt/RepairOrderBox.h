// SPDX-License-Identifier: Apache-2.0
// RepairOrderBox: a ComboBox on the screen, in which a number is typed or an entry picked.
#pragma once

#include "platform/controls/ListBox.h"
#include "platform/qt/EntryFinder.h"

#include <QComboBox>
#include <QPointer>

#include <functional>

class QListView;

namespace platform::qt {

class MatchList;

// What is typed, a number or words of a vehicle, offers the entries that match beneath the box; the
// arrow keys step to one and Enter picks it, a touch picks it too.
//
// Rule: an entry is picked with the mouse or with Enter in the open list; the arrow keys open the
//       list, the wheel does nothing, and nothing typed is completed or added. Enter in the closed
//       box counts when it is let go, and only if it was pressed in the box too: an Enter that
//       closed a dialog must not start the job again. Digits typed while another control of the
//       window has the keyboard are taken over: a scanner does not look where the keyboard is.
class RepairOrderBox : public QComboBox {
public:
    RepairOrderBox(ComboBox& box, QWidget* parent);

    // An entry was picked; the box's text is that entry.
    std::function<void()> picked;
    // Enter was typed in the box.
    std::function<void()> entered;

    void showPopup() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Mirror();
    void ShowEntries();
    void Pick(int entry);
    void Enter();
    void OfferMatches(const QString& typed);
    void HideMatches();
    void NoteEnterPress(const QObject* watched);
    [[nodiscard]] bool IsScanned(const QObject* watched, const QKeyEvent* key) const;
    [[nodiscard]] bool IsTypedIntoTheList(const QObject* watched, const QKeyEvent* key) const;
    void TakeOver(QKeyEvent* key);

    ComboBox* box_;
    QListView* popup_;
    EntryFinder entries_;
    QPointer<MatchList> matches_;  // goes with the window that it lies over
    bool mirroring_ = false;
    bool pressSeen_ = false;  // since the last release of Enter
    bool pressHere_ = false;  // ... in this box, its list closed
};

}  // namespace platform::qt
