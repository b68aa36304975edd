// SPDX-License-Identifier: Apache-2.0
#include "jet/format/RowView.h"

#include "base/NumberedError.h"

#include <algorithm>

namespace jet::format {

std::size_t RowView::OffsetTable() const
{
    const RowLayout& row = table_->row;
    const std::size_t size = row.OffsetTable(VariableCount(), bytes_.size());
    RequireInside(maskAt_, row.number, size);
    return maskAt_ - size;
}

std::size_t RowView::Offset(std::size_t index) const
{
    const std::size_t number = table_->row.number;
    const std::size_t count = VariableCount();
    const std::size_t table = OffsetTable();
    const std::size_t offset = ReadNumber(bytes_, table + number * (count - index), number);
    // Behind what the values can reach, jumps are filling.
    const std::size_t jumps = std::min(table_->row.Jumps(bytes_.size()), table >> (8 * number));
    std::size_t passed = 0;
    while (passed < jumps && ReadNumber(bytes_, maskAt_ - number * (passed + 2), number) <= index)
        ++passed;
    return offset + (passed << (8 * number));
}

// The offset behind value n is the next entry of the table; behind the last value it is `end`.
Span RowView::Variable(std::size_t index) const
{
    const std::size_t count = VariableCount();
    if (index >= count) throw base::NumberedError(3343).At("row: no such variable value");
    const std::size_t number = table_->row.number;
    const std::size_t table = OffsetTable();
    std::size_t from = 0, to = 0;
    if (table_->row.Jumps(bytes_.size()) == 0) {
        const std::size_t entry = table + number * (count - index);
        from = ReadNumber(bytes_, entry, number);
        to = ReadNumber(bytes_, entry - number, number);
    } else {
        from = Offset(index);
        to = Offset(index + 1);
    }
    if (from < number || from > to || to > table)
        throw base::NumberedError(3343).At("row: variable value out of place");
    return bytes_.subspan(from, to - from);
}

}  // namespace jet::format
