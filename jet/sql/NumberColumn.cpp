// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/NumberColumn.h"

namespace jet::sql {

using format::ColumnType;

std::optional<NumberColumn> NumberColumn::Of(const format::TableDefinition& table,
                                             std::size_t column)
{
    const ColumnType type = table.columns[column].type;
    switch (type) {
    case ColumnType::Boolean:
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
    case ColumnType::Currency:
    case ColumnType::Single:
    case ColumnType::Double:
    case ColumnType::Date:
        return NumberColumn(column, type);
    default:
        return std::nullopt;
    }
}

std::optional<double> NumberColumn::In(const format::RowView& row) const
{
    if (type_ == ColumnType::Boolean) return row.Boolean(column_) ? -1 : 0;
    if (row.IsNull(column_)) return std::nullopt;
    const format::Span bytes = row.Field(column_);
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

}  // namespace jet::sql
