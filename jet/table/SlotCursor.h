// SPDX-License-Identifier: Apache-2.0
// SlotCursor: what the cursors over a table's pages share: the row of a slot, moved or not.
#pragma once

#include "jet/table/RowSource.h"
#include "jet/table/StoredRows.h"

namespace jet::table {

// Requires: the pager outlives it.
class SlotCursor : public RowCursor {
protected:
    SlotCursor(const pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table)
        : pager_(&pager), table_(std::move(table))
    {
    }

    // Stands on the row of a slot of page `id_.page`; false when none begins there. Errors: 3343.
    [[nodiscard]] bool Take(const format::DataPage& page, std::uint16_t slot)
    {
        using format::SlotKind;
        const SlotKind kind = page.Kind(slot);
        if (kind == SlotKind::Moved || kind == SlotKind::Deleted) return false;
        format::Span bytes = page.Row(slot);
        if (kind == SlotKind::Pointer) bytes = FollowPointer(bytes);
        id_.slot = slot;
        row_.emplace(bytes, *table_);
        return true;
    }

    const pages::Pager* pager_;
    std::shared_ptr<const format::TableDefinition> table_;

private:
    // The bytes of the moved row.
    [[nodiscard]] format::Span FollowPointer(format::Span pointerRow);

    std::optional<pages::Page> movedPage_;  // keeps a moved row's bytes alive
};

}  // namespace jet::table
