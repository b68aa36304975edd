// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/RepairOrderBox.h"

#include "platform/qt/Mirror.h"
#include "platform/qt/QtText.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScroller>
#include <QWheelEvent>

namespace platform::qt {

namespace {

constexpr int kEntriesAtOnce = 12;
constexpr int kShortest = 16;  // characters

bool IsEnter(const QEvent* event)
{
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

RepairOrderBox::RepairOrderBox(ComboBox& box, QWidget* parent) : QComboBox(parent), box_(&box)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setMaxVisibleItems(kEntriesAtOnce);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kShortest);
    lineEdit()->setTextMargins(6, 0, 6, 0);
    lineEdit()->setPlaceholderText("Type number and Enter, or pick");
    view()->setAlternatingRowColors(true);
    QScroller::grabGesture(view()->viewport(), QScroller::TouchGesture);
    // Where Enter was pressed is only known by watching everybody.
    qApp->installEventFilter(this);
    connect(this, &QComboBox::activated, this, &RepairOrderBox::Pick);
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
    int same = 0;
    while (same < count() && same < box_->ListCount() && itemText(same) == ToQt(box_->List(same)))
        ++same;
    if (same < count()) clear();
    QStringList missing;
    for (int entry = count(); entry < box_->ListCount(); ++entry)
        missing << ToQt(box_->List(entry));
    if (missing.isEmpty()) return;
    const bool first = count() == 0;
    addItems(missing);
    // The first entry would otherwise select itself.
    if (first) setCurrentIndex(-1);
}

void RepairOrderBox::Pick(int entry)
{
    box_->SetText(FromQt(itemText(entry)));
    if (picked) picked();
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
    if (arrow && !(event->modifiers() & Qt::AltModifier)) return showPopup();
    QComboBox::keyPressEvent(event);
}

void RepairOrderBox::keyReleaseEvent(QKeyEvent* event)
{
    if (!IsEnter(event) || event->isAutoRepeat()) return QComboBox::keyReleaseEvent(event);
    const bool mine = !pressSeen_ || pressHere_;
    pressSeen_ = pressHere_ = false;
    event->accept();
    if (mine && entered) entered();
}

void RepairOrderBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

}  // namespace platform::qt
