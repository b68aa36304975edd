// SPDX-License-Identifier: Apache-2.0
#include "jet/table/SlotCursor.h"

namespace jet::table {

using format::SlotKind;

bool SlotCursor::Take(const format::DataPage& page, std::uint16_t slot)
{
    const SlotKind kind = page.Kind(slot);
    if (kind == SlotKind::Moved || kind == SlotKind::Deleted) return false;
    format::Span bytes = page.Row(slot);
    if (kind == SlotKind::Pointer) {
        FoundRow found = FindMovedRow(*pager_, table_->page, MovedRowId(bytes));
        movedPage_ = std::move(found.page);
        bytes = found.bytes;
    }
    id_.slot = slot;
    row_.emplace(bytes, *table_);
    return true;
}

}  // namespace jet::table
