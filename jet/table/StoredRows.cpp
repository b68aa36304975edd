// SPDX-License-Identifier: Apache-2.0
#include "jet/table/StoredRows.h"

#include "base/NumberedError.h"
#include "jet/format/RowPointer.h"

#include <string>

namespace jet::table {

namespace {

using format::DataPage;
using format::SlotKind;

}  // namespace

bool BelongsTo(const pages::Page& page, PageNumber table)
{
    return format::ReadU8(page.Bytes(), 0) == format::kDataPageType &&
           DataPage(page.Bytes()).Owner() == Raw(table);
}

DataPage OwnedPage(format::Span page, std::uint32_t owner)
{
    const DataPage view(page);
    if (view.Owner() != owner)
        throw base::NumberedError(3343).At("data page of owner " + std::to_string(view.Owner()) +
                                           " instead of " + std::to_string(owner));
    return view;
}

RowId MovedRowId(format::Span pointerRow)
{
    return format::ReadRowPointer(pointerRow, 0);
}

FoundRow FindMovedRow(const pages::Pager& pager, PageNumber table, RowId moved)
{
    pages::Page page = pager.Read(moved.page);
    const DataPage view = OwnedPage(page.Bytes(), Raw(table));
    if (view.Kind(moved.slot) != SlotKind::Moved)
        throw base::NumberedError(3343).At("row pointer to page " +
                                           std::to_string(Raw(moved.page)) + " leads to no row");
    const format::Span bytes = view.Row(moved.slot);
    return {std::move(page), bytes};
}

std::optional<FoundRow> FindRow(const pages::Pager& pager, PageNumber table, RowId row)
{
    if (Raw(row.page) >= pager.PageCount()) return std::nullopt;
    pages::Page page = pager.Read(row.page);
    if (!BelongsTo(page, table)) return std::nullopt;
    const DataPage view(page.Bytes());
    if (row.slot >= view.SlotCount()) return std::nullopt;
    switch (view.Kind(row.slot)) {
    case SlotKind::Row: {
        const format::Span bytes = view.Row(row.slot);
        return FoundRow{std::move(page), bytes};
    }
    case SlotKind::Pointer:
        return FindMovedRow(pager, table, MovedRowId(view.Row(row.slot)));
    case SlotKind::Moved:
    case SlotKind::Deleted:
        break;
    }
    return std::nullopt;
}

}  // namespace jet::table
