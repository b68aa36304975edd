// SPDX-License-Identifier: Apache-2.0
// RowPages: puts rows on the data pages of one owner, takes them off, and keeps its maps true.
#pragma once

#include "jet/format/DataPage.h"
#include "jet/pages/UsageMap.h"

#include <optional>

namespace jet::table {

using format::PageNumber;
using format::RowId;

// What becomes of the owner's last page when its last row goes.
enum class EmptyLastPage { Stays, IsGivenBack };

struct PageOwner {
    RowId ownedMap;          // all its pages
    RowId freeMap;           // those with room
    std::uint32_t mark = 0;  // in the pages' headers
    EmptyLastPage emptyLastPage = EmptyLastPage::IsGivenBack;
};

// Requires: `changes` outlives it.
// Rule:   a slot is never used a second time. A page that becomes empty is given back. The map of
//         pages with room names the last page and every page of which a quarter is free.
// Errors: 3343, and those of WriteSet.
class RowPages {
public:
    RowPages(pages::WriteSet& changes, const PageOwner& owner);

    // Behind all others: on the last page, or on a new page above it.
    // So storage order stays the order of entry, until the file is as large as it may be; then
    // wherever there is room.
    RowId Append(format::Span row);
    // Wherever there is room.
    RowId Put(format::Span row, format::SlotKind kind);
    // On a new page of its own, which nothing else is put on.
    RowId PutAlone(format::Span row);

    void Remove(RowId row);
    // Overwrites a row if there is room for it on its page; its slot's kind becomes `kind`.
    [[nodiscard]] bool Replace(RowId row, format::Span bytes, format::SlotKind kind);
    // Makes a row a pointer to `target`. Errors: 3047 when its page has no room for the pointer.
    void Redirect(RowId row, RowId target);

private:
    [[nodiscard]] format::MutableSpan Changed(PageNumber page);
    [[nodiscard]] bool Fits(PageNumber page, std::size_t length) const;
    RowId PutOn(PageNumber page, format::Span row, format::SlotKind kind);
    std::optional<PageNumber> NewPageAbove(PageNumber last);
    PageNumber NewPage(PageNumber above);
    void GiveBack(PageNumber page);
    void SettleListing(PageNumber page);

    pages::WriteSet& changes_;
    PageOwner owner_;
    pages::UsageMap owned_, free_;
};

}  // namespace jet::table
