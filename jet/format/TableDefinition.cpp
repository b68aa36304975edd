// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TableDefinition.h"

#include "base/Text.h"

#include <algorithm>

namespace jet::format {

namespace {

template <class Condition>
std::optional<std::size_t> FirstColumn(const TableDefinition& table, Condition matches)
{
    const auto found = std::find_if(table.columns.begin(), table.columns.end(), matches);
    if (found == table.columns.end()) return std::nullopt;
    return static_cast<std::size_t>(found - table.columns.begin());
}

}  // namespace

std::optional<std::uint16_t> LengthOf(ColumnType type)
{
    switch (type) {
    case ColumnType::Boolean:
    case ColumnType::Byte:
        return 1;
    case ColumnType::Integer:
        return 2;
    case ColumnType::Long:
    case ColumnType::Single:
        return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
        return 8;
    case ColumnType::Guid:
        return 16;
    case ColumnType::Numeric:
        return 17;
    default:
        return std::nullopt;
    }
}

std::optional<std::size_t> TableDefinition::FindColumn(std::string_view name) const
{
    return FirstColumn(*this,
                       [name](const auto& column) { return base::SameName(column.name, name); });
}

std::optional<std::size_t> TableDefinition::FindNumber(std::uint16_t number) const
{
    return FirstColumn(*this, [number](const auto& column) { return column.number == number; });
}

std::optional<std::size_t> TableDefinition::FindAutoNumber() const
{
    return FirstColumn(*this, [](const auto& column) { return column.autoNumber; });
}

}  // namespace jet::format
