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
        const bool set = row.MaskBit(number_);
        if (type_ == format::ColumnType::Boolean) return set ? -1 : 0;
        if (!set) return std::nullopt;
        return NumberOf(row.Fixed(offset_, length_));
    }
    [[nodiscard]] format::ColumnType Type() const { return type_; }

private:
    explicit NumberColumn(const format::ColumnDefinition& column)
        : type_(column.type), number_(column.number), offset_(column.fixedOffset),
          length_(column.length)
    {
    }

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

    format::ColumnType type_;
    std::uint16_t number_, offset_, length_;
};

}  // namespace jet::sql
