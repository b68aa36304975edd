// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/RepairOrderBox.h"

#include "platform/qt/Entries.h"
#include "platform/qt/MatchList.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/QtText.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int kEntriesAtOnce = 12;
constexpr int kShortest = 16;  // characters

const QKeyEvent* KeyPress(const QEvent* event)
{
    return event->type() == QEvent::KeyPress ? static_cast<const QKeyEvent*>(event) : nullptr;
}

// A key that types something, not a command.
bool Types(const QKeyEvent* key)
{
    const auto commands = key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return commands == Qt::NoModifier && key->text().size() == 1 && key->text()[0].isPrint();
}

bool IsEnter(const QEvent* event)
{
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

RepairOrderBox::RepairOrderBox(ComboBox& box, QWidget* parent)
    : QComboBox(parent), box_(&box), popup_(new QListView(this))
{
    setView(popup_);
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setMaxVisibleItems(kEntriesAtOnce);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kShortest);
    lineEdit()->setTextMargins(6, 0, 6, 0);
    lineEdit()->setPlaceholderText("Type number and Enter, or pick");
    popup_->setUniformItemSizes(true);
    OneLineEach(*popup_);
    // Where Enter was pressed is only known by watching everybody.
    qApp->installEventFilter(this);
    connect(this, &QComboBox::activated, this, &RepairOrderBox::Pick);
    connect(lineEdit(), &QLineEdit::textEdited, this, &RepairOrderBox::OfferMatches);
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (mirroring_) return;
        mirroring_ = true;
        box_->SetText(FromQt(text));
        mirroring_ = false;
    });
    Follow(box, this, [this] { Mirror(); });
}

void RepairOrderBox::Mirror()
{
    const bool typing = mirroring_;
    mirroring_ = true;
    if (!typing) ShowEntries();
    const QString text = ToQt(box_->Text());
    if (!typing && currentText() != text) {
        setCurrentIndex(-1);
        setEditText(text);
    }
    mirroring_ = typing;
}

// What is shown already stays; a list that differs is shown anew.
void RepairOrderBox::ShowEntries()
{
    QStringList entries;
    entries.reserve(box_->ListCount());
    for (int entry = 0; entry < box_->ListCount(); ++entry)
        entries << ToQt(box_->List(entry));
    if (entries == entries_.Entries()) return;
    const int shown = count();
    if (entries.mid(0, shown) != entries_.Entries()) clear();
    const bool first = count() == 0;
    addItems(entries.mid(count()));
    entries_ = EntryFinder(std::move(entries));
    // The first entry would otherwise select itself.
    if (first) setCurrentIndex(-1);
}

void RepairOrderBox::Pick(int entry)
{
    HideMatches();
    box_->SetText(FromQt(itemText(entry)));
    if (picked) picked();
    // What is typed next is another number.
    lineEdit()->selectAll();
}

void RepairOrderBox::Enter()
{
    const QString highlighted = matches_ ? matches_->Highlighted() : QString();
    if (!highlighted.isEmpty()) return Pick(findText(highlighted, Qt::MatchExactly));
    HideMatches();
    if (entered) entered();
    lineEdit()->selectAll();
}

void RepairOrderBox::OfferMatches(const QString& typed)
{
    if (!matches_ || matches_->parentWidget() != window()) {
        delete matches_;
        matches_ = new MatchList(this);
        matches_->picked = [this](const QString& entry) {
            Pick(findText(entry, Qt::MatchExactly));
        };
    }
    matches_->Offer(entries_.Matching(typed));
}

void RepairOrderBox::HideMatches()
{
    if (matches_) matches_->hide();
}

// A scanner types wherever the keyboard happens to be, and digits mean nothing but an order there.
bool RepairOrderBox::IsScanned(const QObject* watched, const QKeyEvent* key) const
{
    const auto* widget = static_cast<const QWidget*>(watched);
    return Types(key) && key->text()[0].isDigit() && isVisible() && widget->hasFocus() &&
           widget->window() == window() && widget != this && widget != lineEdit() &&
           qobject_cast<const QLineEdit*>(widget) == nullptr;
}

// Typing into the open list goes on in the field, which finds vehicles too.
bool RepairOrderBox::IsTypedIntoTheList(const QObject* watched, const QKeyEvent* key) const
{
    return watched == view() && view()->isVisible() && Types(key);
}

void RepairOrderBox::TakeOver(QKeyEvent* key)
{
    hidePopup();
    if (!hasFocus()) {
        setFocus(Qt::OtherFocusReason);
        lineEdit()->selectAll();
    }
    keyPressEvent(key);
}

void RepairOrderBox::NoteEnterPress(const QObject* watched)
{
    pressSeen_ = true;
    pressHere_ = (watched == this || watched == lineEdit()) && !view()->isVisible();
}

bool RepairOrderBox::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && watched->isWidgetType() && IsEnter(event) &&
        !static_cast<QKeyEvent*>(event)->isAutoRepeat())
        NoteEnterPress(watched);
    if (const QKeyEvent* key = KeyPress(event); key != nullptr && watched->isWidgetType()) {
        if (IsScanned(watched, key) || IsTypedIntoTheList(watched, key)) {
            TakeOver(static_cast<QKeyEvent*>(event));
            return true;
        }
    }
    if (watched == lineEdit() && event->type() == QEvent::KeyRelease && IsEnter(event)) {
        keyReleaseEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

void RepairOrderBox::keyPressEvent(QKeyEvent* event)
{
    // No matching, no insertion, no default button.
    if (IsEnter(event)) return event->accept();
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    const bool offering = matches_ && matches_->isVisible();
    if (arrow && offering) return matches_->Step(event->key() == Qt::Key_Down ? 1 : -1);
    if (arrow && !(event->modifiers() & Qt::AltModifier)) return showPopup();
    if (event->key() == Qt::Key_Escape && offering) return HideMatches();
    QComboBox::keyPressEvent(event);
}

void RepairOrderBox::keyReleaseEvent(QKeyEvent* event)
{
    if (!IsEnter(event) || event->isAutoRepeat()) return QComboBox::keyReleaseEvent(event);
    const bool mine = !pressSeen_ || pressHere_;
    pressSeen_ = pressHere_ = false;
    event->accept();
    if (mine) Enter();
}

void RepairOrderBox::focusOutEvent(QFocusEvent* event)
{
    HideMatches();
    QComboBox::focusOutEvent(event);
}

void RepairOrderBox::resizeEvent(QResizeEvent* event)
{
    HideMatches();
    QComboBox::resizeEvent(event);
}

void RepairOrderBox::showPopup()
{
    HideMatches();
    popup_->setMinimumWidth(std::min(WidestEntry(*popup_), window()->width()));
    QComboBox::showPopup();
}

void RepairOrderBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

}  // namespace platform::qt
