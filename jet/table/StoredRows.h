// SPDX-License-Identifier: Apache-2.0
// StoredRows: where a table's rows lie on its pages, moved rows included.
#pragma once

#include "jet/format/DataPage.h"
#include "jet/pages/Pager.h"

#include <optional>

namespace jet::table {

using format::PageNumber;
using format::RowId;

// A row's bytes and the page that holds them.
struct FoundRow {
    pages::Page page;
    format::Span bytes;
};

// Whether the page is one of the table's data pages; it may have been given back meanwhile.
[[nodiscard]] bool BelongsTo(const pages::Page& page, PageNumber table);

// The view of a page that must be one of `owner`'s data pages. Errors: 3343.
[[nodiscard]] format::DataPage OwnedPage(format::Span page, std::uint32_t owner);

// The row that a pointer row leads to. Errors: 3343 when it leads anywhere but to a moved row.
[[nodiscard]] RowId MovedRowId(format::Span pointerRow);
[[nodiscard]] FoundRow FindMovedRow(const pages::Pager& pager, PageNumber table, RowId moved);

// The row whose original slot is `row`; nothing when there is none any more.
// Errors: 3343.
[[nodiscard]] std::optional<FoundRow> FindRow(const pages::Pager& pager, PageNumber table,
                                              RowId row);

}  // namespace jet::table
