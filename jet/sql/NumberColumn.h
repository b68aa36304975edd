// SPDX-License-Identifier: Apache-2.0
// NumberColumn: a column of numbers, dates or booleans, read without making a value.
#pragma once

#include "jet/format/RowView.h"

#include <optional>

namespace jet::sql {

// Rule: asked of every row of a scan, so it is worked out where it is asked.
class NumberColumn {
public:
    // Nothing when the column holds something else. Requires: `column` is a place in the table.
    [[nodiscard]] static std::optional<NumberColumn> Of(const format::TableDefinition& table,
                                                        std::size_t column);

    // As NumberIn of the column's value: true is -1; nothing for null. Errors: 3343.
    [[nodiscard]] std::optional<double> In(const format::RowView& row) const
    {
        if (type_ == format::ColumnType::Boolean) return row.Boolean(column_) ? -1 : 0;
        if (row.IsNull(column_)) return std::nullopt;
        return NumberOf(row.Field(column_));
    }
    [[nodiscard]] format::ColumnType Type() const { return type_; }

private:
    NumberColumn(std::size_t column, format::ColumnType type) : column_(column), type_(type) {}

    [[nodiscard]] double NumberOf(format::Span bytes) const
    {
        using format::ColumnType;
        switch (type_) {
        case ColumnType::Byte:
            return format::ReadU8(bytes, 0);
        case ColumnType::Integer:
            return format::ReadScalar<std::int16_t>(bytes, 0);
        case ColumnType::Long:
            return format::ReadI32(bytes, 0);
        case ColumnType::Currency:
            return static_cast<double>(format::ReadScalar<std::int64_t>(bytes, 0)) / 10000;
        case ColumnType::Single:
            return format::ReadScalar<float>(bytes, 0);
        default:
            return format::ReadF64(bytes, 0);
        }
    }

    std::size_t column_;
    format::ColumnType type_;
};

}  // namespace jet::sql
