// SPDX-License-Identifier: Apache-2.0
// NumberColumn: a column of numbers, dates or booleans, read without making a value.
#pragma once

#include "jet/format/RowView.h"

#include <optional>

namespace jet::format {

// Rule: asked of every row of a scan, so it is worked out where it is asked.
class NumberColumn {
public:
    // Nothing when the column holds something else. Requires: `column` is a place in the table.
    [[nodiscard]] static std::optional<NumberColumn> Of(const TableDefinition& table,
                                                        std::size_t column);

    // The value as a number: true is -1; nothing for null. Errors: 3343.
    [[nodiscard]] std::optional<double> In(const RowView& row) const
    {
        const bool set = row.MaskBit(number_);
        if (type_ == ColumnType::Boolean) return set ? -1 : 0;
        if (!set) return std::nullopt;
        return NumberOf(row.Fixed(offset_, length_));
    }
    [[nodiscard]] ColumnType Type() const { return type_; }

private:
    explicit NumberColumn(const ColumnDefinition& column)
        : type_(column.type), number_(column.number), offset_(column.fixedOffset),
          length_(column.length)
    {
    }

    [[nodiscard]] double NumberOf(Span bytes) const
    {
        switch (type_) {
        case ColumnType::Byte:
            return ReadU8(bytes, 0);
        case ColumnType::Integer:
            return ReadScalar<std::int16_t>(bytes, 0);
        case ColumnType::Long:
            return ReadI32(bytes, 0);
        case ColumnType::Currency:
            return static_cast<double>(ReadScalar<std::int64_t>(bytes, 0)) / 10000;
        case ColumnType::Single:
            return ReadScalar<float>(bytes, 0);
        default:
            return ReadF64(bytes, 0);
        }
    }

    ColumnType type_;
    std::uint16_t number_, offset_, length_;
};

}  // namespace jet::format
