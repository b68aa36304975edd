// SPDX-License-Identifier: Apache-2.0
#include "jet/format/RowWriter.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <cassert>

namespace jet::format {

RowWriter::RowWriter(const TableDefinition& table) : table_(&table), fields_(table.columns.size())
{
}

RowWriter::RowWriter(const RowView& row) : RowWriter(row.Table())
{
    for (std::size_t column = 0; column < fields_.size(); ++column) {
        if (table_->columns[column].type == ColumnType::Boolean) {
            SetBoolean(column, row.Boolean(column));
        } else if (!row.IsNull(column)) {
            const Span bytes = row.Field(column);
            SetField(column, {bytes.begin(), bytes.end()});
        }
    }
}

void RowWriter::SetNull(std::size_t column)
{
    fields_[column] = {};
}

void RowWriter::SetBoolean(std::size_t column, bool value)
{
    fields_[column].present = value;
}

void RowWriter::SetField(std::size_t column, std::vector<std::byte> bytes)
{
    [[maybe_unused]] const ColumnDefinition& definition = table_->columns[column];
    assert(definition.type != ColumnType::Boolean);
    if (definition.fixed && bytes.size() != definition.length)
        throw base::NumberedError(3343).At("length of column " + definition.name);
    fields_[column] = {true, std::move(bytes)};
}

std::size_t RowWriter::FixedSize() const
{
    std::size_t size = 0;
    for (const ColumnDefinition& column : table_->columns)
        if (column.fixed && column.type != ColumnType::Boolean)
            size = std::max(size, std::size_t{column.fixedOffset} + column.length);
    return size;
}

std::size_t RowWriter::Size() const
{
    std::size_t size = table_->row.number + FixedSize() + NullMaskSize(table_->columnCounter);
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (!table_->columns[i].fixed) size += fields_[i].bytes.size();
    const std::size_t variable = table_->variableColumnCounter;
    if (variable == 0) return size;
    // Each jump lengthens the row, which may need one jump more.
    std::size_t whole = size;
    for (std::size_t before = 0; whole != before;) {
        before = whole;
        whole = size + table_->row.OffsetTable(variable, before);
    }
    return whole;
}

std::vector<const RowWriter::StoredField*> RowWriter::VariableFields() const
{
    std::vector<const StoredField*> variable(table_->variableColumnCounter, nullptr);
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (!table_->columns[i].fixed && fields_[i].present)
            variable[table_->columns[i].variableIndex] = &fields_[i];
    return variable;
}

std::vector<std::byte> RowWriter::Row() const
{
    const std::size_t number = table_->row.number;
    std::vector<std::byte> row(Size());
    WriteNumber(row, 0, number, table_->columnCounter);
    const std::size_t maskAt = row.size() - NullMaskSize(table_->columnCounter);
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const ColumnDefinition& column = table_->columns[i];
        if (!fields_[i].present) continue;
        row[maskAt + column.number / 8] |= std::byte{1} << (column.number % 8);
        if (!column.fixed) continue;
        const auto at = static_cast<std::ptrdiff_t>(number + column.fixedOffset);
        std::copy(fields_[i].bytes.begin(), fields_[i].bytes.end(), row.begin() + at);
    }
    if (table_->variableColumnCounter > 0) PutVariablePart(row, maskAt);
    return row;
}

// The offsets lie backwards: value 0's just before the jumps, `end` furthest from them.
void RowWriter::PutVariablePart(MutableSpan row, std::size_t maskAt) const
{
    const std::size_t number = table_->row.number;
    const std::size_t count = table_->variableColumnCounter;
    std::size_t entry = maskAt - number * (1 + table_->row.Jumps(row.size()));
    std::fill(row.begin() + static_cast<std::ptrdiff_t>(entry),
              row.begin() + static_cast<std::ptrdiff_t>(maskAt), std::byte{0xFF});
    WriteNumber(row, maskAt - number, number, count);
    std::size_t at = number + FixedSize();
    std::size_t jumps = 0;
    const auto putOffset = [&](std::size_t index) {
        entry -= number;
        WriteNumber(row, entry, number, at);
        for (; jumps < at >> (8 * number); ++jumps)
            WriteNumber(row, maskAt - number * (jumps + 2), number, index);
    };
    const std::vector<const StoredField*> fields = VariableFields();
    for (std::size_t index = 0; index < count; ++index) {
        putOffset(index);
        if (fields[index] == nullptr) continue;
        const std::vector<std::byte>& bytes = fields[index]->bytes;
        std::copy(bytes.begin(), bytes.end(), row.begin() + static_cast<std::ptrdiff_t>(at));
        at += bytes.size();
    }
    putOffset(count);
}

}  // namespace jet::format
