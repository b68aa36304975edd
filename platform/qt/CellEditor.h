// SPDX-License-Identifier: Apache-2.0
// CellEditor: the line in which the user types into a cell of a grid.
#pragma once

#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

#include <functional>

namespace platform::qt {

// Rule: Enter, Tab, and leaving the line store what it holds; Escape restores the stored text. A
//       text that was refused stays in the line, which stays open.
class CellEditor : public QStyledItemDelegate {
public:
    // Stores a text; false when it was refused.
    using Store = std::function<bool(const QModelIndex& cell, const QString& text)>;

    CellEditor(Store store, QObject* parent);

    [[nodiscard]] QLineEdit* Line() const { return line_; }
    [[nodiscard]] QModelIndex Cell() const { return cell_; }
    [[nodiscard]] bool Storing() const { return storing_; }
    // Stores what the line holds and closes it. False when that was refused.
    [[nodiscard]] bool Finish(EndEditHint then = NoHint);

    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool Key(int key);
    void LeaveSoon();

    Store store_;
    mutable QPointer<QLineEdit> line_;
    mutable QPersistentModelIndex cell_;
    mutable bool filled_ = false;
    mutable bool storing_ = false;
    mutable bool refused_ = false;
};

}  // namespace platform::qt
