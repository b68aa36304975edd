// SPDX-License-Identifier: Apache-2.0
// Grid: rows of a record set in columns addressed by number, one row current.
#pragma once

#include "base/Value.h"
#include "jet/dao/Recordset.h"
#include "platform/controls/Control.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class Alignment { Left, Right, Center };

// One column. Units: width in twips (1440 an inch); position from 1, left to right.
struct Column {
    std::string field;    // of the record set
    std::string caption;  // the field's name until a layout says otherwise
    int width = 1000;
    std::string format;  // of base::Format; empty shows the value's text
    bool visible = true;
    bool editable = false;  // whether the user may type into its cells
    int position = 0;
    Alignment headerAlignment = Alignment::Left;
    Alignment textAlignment = Alignment::Left;
    friend bool operator==(const Column&, const Column&) = default;
};

// Shows the rows a record set held when it was bound.
//
// Units:  columns and rows are counted from 1; row 0 means none is current.
// Rule:   after Bind the first row is current (none when there is no row), and nothing is raised.
//         SetValue changes the current row's cell; when the bound record set has no pending edit,
//         the value is written through to that row's record at once (an empty text into a date or
//         number column is null there).
// Errors: 9 for a column that does not exist; those of the record set.
class Grid : public Control {
public:
    // Columns from the set's fields, rows from its records. Requires: the set outlives the binding.
    void Bind(dao::Recordset& records);
    // No columns, no rows, no record set.
    void Reset();

    [[nodiscard]] int ColumnCount() const;
    [[nodiscard]] Column& ColumnAt(int column);
    [[nodiscard]] const Column& ColumnAt(int column) const;
    // Moves a column to a place among all columns; the others keep their order.
    void SetPosition(int column, int position);
    // To be called after changes made through ColumnAt.
    void LayoutChanged();

    [[nodiscard]] int RowCount() const;
    [[nodiscard]] int Row() const;
    void SetRow(int row);

    // Of the current row; null without one.
    [[nodiscard]] base::Value Value(int column) const;
    [[nodiscard]] std::string Text(int column) const;
    void SetValue(int column, const base::Value& value);
    // Changes the current row's cell alone, and not its record.
    void SetCell(int column, const base::Value& value);
    // What a cell shows: its value through the column's format.
    [[nodiscard]] std::string Shown(int row, int column) const;
    // Whether the user may type into the cells of editable columns.
    bool allowEdit = false;

private:
    struct BoundRow {
        dao::BookmarkValue bookmark;
        std::vector<base::Value> cells;
    };
    std::vector<Column> columns_;
    std::vector<BoundRow> rows_;
    int row_ = 0;
    dao::Recordset* records_ = nullptr;
};

}  // namespace platform
