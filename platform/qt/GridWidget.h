// SPDX-License-Identifier: Apache-2.0
// GridWidget: a Grid on the screen: its columns laid out, its current row kept, its clicks
// reported.
#pragma once

#include "platform/qt/CellEditor.h"
#include "platform/qt/ColumnWidths.h"
#include "platform/qt/GridModel.h"

#include <QTableView>

#include <functional>
#include <vector>

namespace platform::qt {

// Rule: only the user moves raise `moved`; what the program does to the grid raises nothing.
//       Where an editable column is shown, rows are higher, and a double click, Enter, F2, the
//       space bar or the first letter typed opens that column's cell of the current row. Where a
//       reported move was not taken over (the grid stays on its row), the screen goes back. Where
//       the grid has no current row none is shown; a click, an arrow key or a letter is then the
//       first move, and the focus alone is none.
class GridWidget : public QTableView {
public:
    // `stretching` columns (by number) share the room that the others leave.
    GridWidget(Grid& grid, std::vector<int> stretching, QWidget* parent);

    // A click on a row, or Enter or the space bar on the current one.
    std::function<void()> clickedRow;
    // The user went to `row`; rows and columns count from 1, 0 was none.
    std::function<void(int row, int lastRow, int lastColumn)> moved;
    // The user typed into a cell; answers whether its grid took the text.
    std::function<bool(int row, int column, const std::string& text)> typed;

    // Stores what is being typed. False when it was refused; the user then types on.
    [[nodiscard]] bool FinishTyping();
    // What assistive technology reads of each cell besides its text.
    void TellRows(std::function<std::string(int row)> inWords);
    // Goes to the next row whose text begins so.
    void keyboardSearch(const QString& letters) override;

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void LookAndFeel();
    void Mirror();
    void ShowCurrentRow();
    void ApplyLayout();
    void FitWidths();
    [[nodiscard]] ColumnWish WishOf(int column) const;
    [[nodiscard]] int WidestText(int column) const;
    [[nodiscard]] int WidthOf(const std::string& text) const;
    [[nodiscard]] int FirstColumn() const;
    [[nodiscard]] int TypedColumn() const;
    void AllowTyping();
    void TypeInto(int row);
    void ShowWholeText(const QPoint& place, const QPoint& onScreen);

    Grid* grid_;
    GridModel* model_;
    CellEditor* editor_;
    std::vector<int> stretching_;
    std::vector<Column> layout_;      // as laid out last
    std::vector<ColumnWish> wishes_;  // of each column
    bool mirroring_ = false;
};

}  // namespace platform::qt
