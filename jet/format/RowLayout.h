// SPDX-License-Identifier: Apache-2.0
// RowLayout: where a row keeps its parts.
#pragma once

#include <cstddef>

namespace jet::format {

//                                                                       docs/format/row.md
//
//   part           width       meaning
//   columnCount    number      columns the table had when the row was written
//   fixed part     varies      the fixed columns at their offsets, null or not
//   variable part  varies      the variable values that are not null, in order
//   slack          varies      left by an update that shortened the row; none in Jet 3
//   end            number      offset behind the last variable value
//   offsets        number each of the variable values, the last one first
//   jumps          number each the last one first; see below
//   variableCount  number      number of those offsets
//   null mask      a bit each  1: the column has a value; of a boolean column: true
//
// A table without variable columns has none of the parts from variable part to variableCount.
//
// A number too small for an offset holds its remainder. For each multiple of what it can count
// there is then a jump: the first of the offsets (`end` being the last) that reaches the multiple.
// There are as many jumps as such multiples lie below the row's length; those that no offset
// reaches are filled with ones. Numbers of two bytes hold every offset of a page: no jumps.
struct RowLayout {
    std::size_t number;  // bytes

    [[nodiscard]] constexpr std::size_t Jumps(std::size_t rowLength) const
    {
        return rowLength == 0 ? 0 : (rowLength - 1) >> (8 * number);
    }
    // Bytes between the values and the null mask, in a row with variable columns.
    [[nodiscard]] constexpr std::size_t OffsetTable(std::size_t variables,
                                                    std::size_t rowLength) const
    {
        return number * (variables + 2 + Jumps(rowLength));
    }
};
inline constexpr RowLayout kRowJet3{.number = 1};
inline constexpr RowLayout kRowJet4{.number = 2};

[[nodiscard]] constexpr std::size_t NullMaskSize(std::size_t columnCount)
{
    return (columnCount + 7) / 8;
}

}  // namespace jet::format
