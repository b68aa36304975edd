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

}  // namespace jet::sql
