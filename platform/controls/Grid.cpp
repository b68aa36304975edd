// SPDX-License-Identifier: Apache-2.0
#include "platform/controls/Grid.h"

#include "base/Convert.h"
#include "base/Format.h"
#include "base/NumberedError.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace platform {

namespace {

constexpr int kSubscriptOutOfRange = 9;
constexpr int kInvalidPropertyValue = 380;
constexpr int kRecordIsDeleted = 3167;

std::vector<Column> ColumnsOf(const dao::Recordset& records)
{
    std::vector<Column> columns;
    for (int index = 0; index < records.FieldCount(); ++index) {
        Column column;
        column.field = records.FieldName(index);
        column.caption = column.field;
        column.position = index + 1;
        columns.push_back(std::move(column));
    }
    return columns;
}

// The values of the current record; nothing when somebody else has deleted it meanwhile.
std::optional<std::vector<base::Value>> CellsOf(dao::Recordset& records, std::size_t count)
{
    std::vector<base::Value> cells;
    try {
        for (std::size_t index = 0; index < count; ++index)
            cells.push_back(records[static_cast<int>(index)].Value());
    } catch (const base::NumberedError& error) {
        if (error.Number() != kRecordIsDeleted) throw;
        return std::nullopt;
    }
    return cells;
}

bool IsTextType(dao::FieldType type)
{
    return type == dao::FieldType::Text || type == dao::FieldType::Memo;
}

// Emptying a cell of a date or number column makes it null; only text can be empty.
base::Value Storable(const base::Value& value, dao::FieldType type)
{
    const std::string* text = value.As<std::string>();
    if (text != nullptr && text->empty() && !IsTextType(type)) return base::Null{};
    return value;
}

// Stores one field of the current record; answers what the record then holds.
// Rule: a refused value leaves no edit pending.
base::Value WriteThrough(dao::Recordset& records, const std::string& field,
                         const base::Value& value)
{
    records.Edit();
    try {
        records[field] = value;
        base::Value stored = records[field].Value();
        records.Update();
        return stored;
    } catch (const base::NumberedError&) {
        if (records.EditMode() != dao::EditMode::None) records.CancelUpdate();
        throw;
    }
}

}  // namespace

void Grid::Bind(dao::Recordset& records)
{
    std::vector<Column> columns = ColumnsOf(records);
    std::vector<BoundRow> rows;
    if (!(records.Bof() && records.Eof())) {
        for (records.MoveFirst(); !records.Eof(); records.MoveNext()) {
            std::optional<std::vector<base::Value>> cells = CellsOf(records, columns.size());
            if (cells) rows.push_back({records.Bookmark(), std::move(*cells)});
        }
        records.MoveFirst();
    }
    columns_ = std::move(columns);
    rows_ = std::move(rows);
    row_ = rows_.empty() ? 0 : 1;
    records_ = &records;
    Changed();
}

void Grid::Reset()
{
    columns_.clear();
    rows_.clear();
    row_ = 0;
    records_ = nullptr;
    Changed();
}

int Grid::ColumnCount() const
{
    return static_cast<int>(columns_.size());
}

const Column& Grid::ColumnAt(int column) const
{
    if (column < 1 || column > ColumnCount()) throw base::NumberedError(kSubscriptOutOfRange);
    return columns_[static_cast<std::size_t>(column - 1)];
}

Column& Grid::ColumnAt(int column)
{
    if (column < 1 || column > ColumnCount()) throw base::NumberedError(kSubscriptOutOfRange);
    return columns_[static_cast<std::size_t>(column - 1)];
}

void Grid::SetPosition(int column, int position)
{
    Column& moved = ColumnAt(column);
    const int to = std::clamp(position, 1, ColumnCount());
    const int from = moved.position;
    for (Column& other : columns_) {
        if (other.position > from && other.position <= to) --other.position;
        if (other.position < from && other.position >= to) ++other.position;
    }
    moved.position = to;
    Changed();
}

void Grid::LayoutChanged()
{
    Changed();
}

int Grid::RowCount() const
{
    return static_cast<int>(rows_.size());
}

int Grid::Row() const
{
    return row_;
}

void Grid::SetRow(int row)
{
    if (row < 0 || row > RowCount()) throw base::NumberedError(kInvalidPropertyValue);
    row_ = row;
    Changed();
}

base::Value Grid::Value(int column) const
{
    if (row_ == 0) return {};
    (void)ColumnAt(column);
    return rows_[static_cast<std::size_t>(row_ - 1)].cells[static_cast<std::size_t>(column - 1)];
}

std::string Grid::Text(int column) const
{
    return base::TextOf(Value(column));
}

void Grid::SetValue(int column, const base::Value& value)
{
    if (row_ == 0 || records_ == nullptr) return;
    const Column& target = ColumnAt(column);
    dao::Recordset& records = *records_;
    base::Value cell = Storable(value, records.TypeOf(column - 1));
    if (records.EditMode() == dao::EditMode::None) {
        records.SetBookmark(rows_[static_cast<std::size_t>(row_ - 1)].bookmark);
        cell = WriteThrough(records, target.field, cell);
    }
    SetCell(column, cell);
}

void Grid::SetCell(int column, const base::Value& value)
{
    if (row_ == 0) return;
    (void)ColumnAt(column);
    rows_[static_cast<std::size_t>(row_ - 1)].cells[static_cast<std::size_t>(column - 1)] = value;
    Changed();
}

std::string Grid::Shown(int row, int column) const
{
    const Column& shown = ColumnAt(column);
    if (row < 1 || row > RowCount()) return {};
    const base::Value& value =
        rows_[static_cast<std::size_t>(row - 1)].cells[static_cast<std::size_t>(column - 1)];
    return shown.format.empty() ? base::TextOf(value) : base::Format(value, shown.format);
}

}  // namespace platform
