// SPDX-License-Identifier: Apache-2.0
#include "jet/table/SlotCursor.h"

namespace jet::table {

format::Span SlotCursor::FollowPointer(format::Span pointerRow)
{
    FoundRow found = FindMovedRow(*pager_, table_->page, MovedRowId(pointerRow));
    movedPage_ = std::move(found.page);
    return found.bytes;
}

}  // namespace jet::table
