// SPDX-License-Identifier: Apache-2.0
// RowView: one stored row's bytes, field by field, without making values.
#pragma once

#include "base/Value.h"
#include "jet/format/Layout.h"
#include "jet/format/TableDefinition.h"

namespace jet::format {

// A view. Requires: bytes and table outlive it.
// Rule:   columns are addressed by their place in TableDefinition::columns. A column added after
//         the row was written is null (a boolean false). A boolean is never null.
// Errors: 3343 when the row contradicts itself.
class RowView {
public:
    RowView(Span bytes, const TableDefinition& table)
        : bytes_(bytes), table_(&table), columnCount_(ReadNumber(bytes, 0, table.row.number))
    {
        const std::size_t mask = NullMaskSize(columnCount_);
        RequireInside(bytes.size(), table.row.number, mask);
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
    // The bit of the null mask of a column's number.
    [[nodiscard]] bool MaskBit(std::size_t number) const
    {
        if (number >= columnCount_) return false;
        const auto byte = std::to_integer<unsigned>(bytes_[maskAt_ + number / 8]);
        return ((byte >> (number % 8)) & 1U) != 0;
    }
    // The bytes at a place in the fixed part.
    [[nodiscard]] Span Fixed(std::size_t offset, std::size_t length) const
    {
        const std::size_t at = table_->row.number + offset;
        RequireInside(maskAt_, at, length);
        return bytes_.subspan(at, length);
    }
    // The stored bytes of a non-null, non-boolean column; of Memo and Ole, the long-value header.
    [[nodiscard]] Span Field(std::size_t column) const
    {
        const ColumnDefinition& definition = table_->columns[column];
        if (!definition.fixed) return Variable(definition.variableIndex);
        return Fixed(definition.fixedOffset, definition.length);
    }

    [[nodiscard]] Span Bytes() const { return bytes_; }
    [[nodiscard]] const TableDefinition& Table() const { return *table_; }
    [[nodiscard]] std::size_t ColumnCount() const { return columnCount_; }
    // Offsets in the variable table; 0 for a row without variable part.
    [[nodiscard]] std::size_t VariableCount() const
    {
        if (table_->variableColumnCounter == 0 || columnCount_ <= table_->columnsBeforeVariable)
            return 0;
        const std::size_t number = table_->row.number;
        RequireInside(maskAt_, number, number);
        return ReadNumber(bytes_, maskAt_ - number, number);
    }
    // Where the table of offsets begins, that is where the variable values end at the latest.
    // Requires: the row has a variable part. Errors: 3343.
    [[nodiscard]] std::size_t OffsetTable() const;
    // Where a variable value starts; of VariableCount() where the last one ends.
    // Requires: as above, and `index` is at most VariableCount().
    [[nodiscard]] std::size_t Offset(std::size_t index) const;

private:
    [[nodiscard]] Span Variable(std::size_t index) const;

    Span bytes_;
    const TableDefinition* table_;
    std::size_t columnCount_;
    std::size_t maskAt_ = 0;
};

}  // namespace jet::format
