// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/CellEditor.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>

namespace platform::qt {

namespace {

constexpr int kTextMargin = 4;

// Other programs, menus and boxes take the keyboard for a while only.
bool ComesBack(const QFocusEvent& event)
{
    return event.reason() == Qt::ActiveWindowFocusReason ||
           event.reason() == Qt::PopupFocusReason || event.reason() == Qt::MenuBarFocusReason;
}

}  // namespace

CellEditor::CellEditor(Store store, QObject* parent)
    : QStyledItemDelegate(parent), store_(std::move(store))
{
}

QWidget* CellEditor::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                  const QModelIndex& index) const
{
    line_ = new QLineEdit(parent);
    line_->setObjectName("cellEditor");
    line_->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
    line_->setTextMargins(kTextMargin, 0, kTextMargin, 0);
    line_->setAutoFillBackground(true);
    cell_ = index;
    filled_ = refused_ = false;
    return line_;
}

// Once: what the grid tells while the user types does not overwrite his text.
void CellEditor::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (editor != line_ || filled_) return;
    filled_ = true;
    line_->setText(index.data(Qt::DisplayRole).toString());
    line_->selectAll();
}

void CellEditor::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                              const QModelIndex& index) const
{
    if (editor != line_ || storing_) return;
    const QString text = line_->text();
    refused_ = false;
    if (text == index.data(Qt::DisplayRole).toString()) return;
    storing_ = true;
    refused_ = !store_(index, text);
    storing_ = false;
}

void CellEditor::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                      const QModelIndex& /*index*/) const
{
    editor->setGeometry(option.rect);
}

void CellEditor::destroyEditor(QWidget* editor, const QModelIndex& index) const
{
    if (editor == line_) line_ = nullptr;
    QStyledItemDelegate::destroyEditor(editor, index);
}

bool CellEditor::Finish(EndEditHint then)
{
    if (line_ == nullptr) return true;
    if (storing_) return false;
    QLineEdit* const line = line_;
    emit commitData(line);
    if (refused_) {
        line->setFocus();
        return false;
    }
    emit closeEditor(line, then);
    return true;
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != line_) return QStyledItemDelegate::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && Key(static_cast<QKeyEvent*>(event)->key()))
        return true;
    if (event->type() == QEvent::FocusOut) {
        if (!ComesBack(*static_cast<QFocusEvent*>(event))) LeaveSoon();
        return false;
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

// The keys that end the typing; all others are the line's.
bool CellEditor::Key(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        (void)Finish();
        return true;
    case Qt::Key_Tab:
        (void)Finish(EditNextItem);
        return true;
    case Qt::Key_Backtab:
        (void)Finish(EditPreviousItem);
        return true;
    default:
        return false;
    }
}

// After the click that took the keyboard away has done its work: a box in its middle would swallow
// the release of the button.
void CellEditor::LeaveSoon()
{
    const auto leave = [this, line = line_] {
        if (line == nullptr || line != line_ || storing_ || line->hasFocus()) return;
        const QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || modal->isAncestorOf(line)) (void)Finish();
    };
    QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
}

}  // namespace platform::qt
