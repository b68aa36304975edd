// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/FieldTypes.h"

namespace dao {

using jet::format::ColumnType;

// The codes are the same but for these three. Columns of other types, as Access has them in a table
// of its own, hold bytes to whoever reads them.
FieldType FieldTypeOf(ColumnType type)
{
    switch (type) {
    case ColumnType::Ole:
        return FieldType::LongBinary;
    case ColumnType::Guid:
        return FieldType::Guid;
    case ColumnType::Numeric:
        return FieldType::Decimal;
    default:
        return type > ColumnType::Memo ? FieldType::Binary : static_cast<FieldType>(type);
    }
}

std::optional<ColumnType> ColumnTypeOf(FieldType type)
{
    switch (type) {
    case FieldType::LongBinary:
        return ColumnType::Ole;
    case FieldType::Guid:
        return ColumnType::Guid;
    case FieldType::Decimal:
        return ColumnType::Numeric;
    default:
        break;
    }
    const int code = static_cast<int>(type);
    if (code < static_cast<int>(FieldType::Boolean) || code > static_cast<int>(FieldType::Memo))
        return std::nullopt;
    return static_cast<ColumnType>(code);
}

int FieldSizeOf(const jet::format::ColumnDefinition& column, std::size_t bytesPerCharacter)
{
    if (const auto length = jet::format::LengthOf(column.type)) return *length;
    switch (column.type) {
    case ColumnType::Text:
        return static_cast<int>(column.length / bytesPerCharacter);
    case ColumnType::Ole:
    case ColumnType::Memo:
        return 0;
    default:
        return column.length;
    }
}

}  // namespace dao
