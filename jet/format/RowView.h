// SPDX-License-Identifier: Apache-2.0
// RowView: one stored row's bytes, field by field, without making values.
#pragma once

#include "base/Value.h"
#include "jet/format/Bytes.h"
#include "jet/format/TableDefinition.h"

namespace jet::format {

struct FileVersion;

// Where a row keeps its parts.                                          docs/format/row.md
//
//   part           width       meaning
//   columnCount    2           columns the table had when the row was written
//   fixed part     varies      the fixed columns at their offsets, null or not
//   variable part  varies      the variable values that are not null, in order
//   slack          varies      left by an update that shortened the row
//   end            2           offset behind the last variable value
//   offsets        2 each      of the variable values, the last one first
//   variableCount  2           number of those offsets
//   null mask      a bit each  1: the column has a value; of a boolean column: true
//
// A table without variable columns has none of the four parts from variable part to variableCount.
inline constexpr std::size_t kRowColumnCountSize = 2, kRowOffsetSize = 2, kRowVariableCountSize = 2;

[[nodiscard]] constexpr std::size_t NullMaskSize(std::size_t columnCount)
{
    return (columnCount + 7) / 8;
}

// A view. Requires: bytes, table and version outlive it.
// Rule:   columns are addressed by their place in TableDefinition::columns. A column added after
//         the row was written is null (a boolean false). A boolean is never null.
// Errors: 3343 when the row contradicts itself.
class RowView {
public:
    RowView(Span bytes, const TableDefinition& table, const FileVersion& version)
        : RowView(bytes, table)
    {
        static_cast<void>(version);  // rows of Jet 4 are the only ones so far
    }
    RowView(Span bytes, const TableDefinition& table)
        : bytes_(bytes), table_(&table), columnCount_(ReadU16(bytes, 0))
    {
        const std::size_t mask = NullMaskSize(columnCount_);
        RequireInside(bytes.size(), kRowColumnCountSize, mask);
        maskAt_ = bytes.size() - mask;
    }

    [[nodiscard]] bool IsNull(std::size_t column) const
    {
        const ColumnDefinition& definition = table_->columns[column];
        if (definition.type == ColumnType::Boolean) return false;
        if (!MaskBit(definition.number)) return true;
        return !definition.fixed && definition.variableIndex >= VariableCount();
    }
    // A boolean column's value; it lives in the null mask.
    [[nodiscard]] bool Boolean(std::size_t column) const
    {
        return MaskBit(table_->columns[column].number);
    }
    // The stored bytes of a non-null, non-boolean column; of Memo and Ole, the long-value header.
    [[nodiscard]] Span Field(std::size_t column) const
    {
        const ColumnDefinition& definition = table_->columns[column];
        if (!definition.fixed) return Variable(definition.variableIndex);
        const std::size_t at = kRowColumnCountSize + definition.fixedOffset;
        RequireInside(maskAt_, at, definition.length);
        return bytes_.subspan(at, definition.length);
    }

    [[nodiscard]] Span Bytes() const { return bytes_; }
    [[nodiscard]] const TableDefinition& Table() const { return *table_; }
    [[nodiscard]] std::size_t ColumnCount() const { return columnCount_; }
    // Offsets in the variable table; 0 for a row without variable part.
    [[nodiscard]] std::size_t VariableCount() const
    {
        if (table_->variableColumnCounter == 0 || columnCount_ <= table_->columnsBeforeVariable)
            return 0;
        RequireInside(maskAt_, kRowColumnCountSize, kRowVariableCountSize);
        return ReadU16(bytes_, maskAt_ - kRowVariableCountSize);
    }

private:
    [[nodiscard]] bool MaskBit(std::size_t number) const
    {
        if (number >= columnCount_) return false;
        const auto byte = std::to_integer<unsigned>(bytes_[maskAt_ + number / 8]);
        return ((byte >> (number % 8)) & 1U) != 0;
    }
    [[nodiscard]] Span Variable(std::size_t index) const;

    Span bytes_;
    const TableDefinition* table_;
    std::size_t columnCount_;
    std::size_t maskAt_ = 0;
};

}  // namespace jet::format
