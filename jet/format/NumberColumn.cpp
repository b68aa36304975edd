// SPDX-License-Identifier: Apache-2.0
#include "jet/format/NumberColumn.h"

namespace jet::format {

std::optional<NumberColumn> NumberColumn::Of(const TableDefinition& table, std::size_t column)
{
    const ColumnDefinition& definition = table.columns[column];
    if (!definition.fixed) return std::nullopt;
    switch (definition.type) {
    case ColumnType::Boolean:
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
    case ColumnType::Currency:
    case ColumnType::Single:
    case ColumnType::Double:
    case ColumnType::Date:
        return NumberColumn(definition);
    default:
        return std::nullopt;
    }
}

}  // namespace jet::format
