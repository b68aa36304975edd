// SPDX-License-Identifier: Apache-2.0
// Columns: definitions of columns written out in one line of a test.
#pragma once

#include "jet/format/TableDefinition.h"

namespace tests {

using jet::format::ColumnDefinition;
using jet::format::ColumnType;

inline ColumnDefinition FixedColumn(ColumnType type, std::uint16_t number, std::uint16_t offset,
                                    std::uint16_t length)
{
    ColumnDefinition column;
    column.type = type;
    column.number = column.ordinal = number;
    column.fixedOffset = offset;
    column.length = length;
    return column;
}

inline ColumnDefinition VariableColumn(ColumnType type, std::uint16_t number, std::uint16_t index,
                                       std::uint16_t length = 100)
{
    ColumnDefinition column;
    column.type = type;
    column.number = column.ordinal = number;
    column.variableIndex = index;
    column.fixed = false;
    column.compressed = true;
    column.length = length;
    return column;
}

}  // namespace tests
