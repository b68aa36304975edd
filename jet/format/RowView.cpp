// SPDX-License-Identifier: Apache-2.0
#include "jet/format/RowView.h"

#include "base/NumberedError.h"

namespace jet::format {

// The offset behind value n is the next entry of the table; behind the last value it is `end`.
Span RowView::Variable(std::size_t index) const
{
    const std::size_t count = VariableCount();
    if (index >= count) throw base::NumberedError(3343).At("row: no such variable value");
    const std::size_t table = (count + 1) * kRowOffsetSize + kRowVariableCountSize;
    RequireInside(maskAt_, kRowColumnCountSize, table);
    const std::size_t firstEntry = maskAt_ - kRowVariableCountSize - kRowOffsetSize;
    const std::size_t from = ReadU16(bytes_, firstEntry - kRowOffsetSize * index);
    const std::size_t to = ReadU16(bytes_, firstEntry - kRowOffsetSize * (index + 1));
    if (from < kRowColumnCountSize || from > to || to > maskAt_ - table)
        throw base::NumberedError(3343).At("row: variable value out of place");
    return bytes_.subspan(from, to - from);
}

}  // namespace jet::format
