// SPDX-License-Identifier: Apache-2.0
// Cursor: walks the entries of one index in key order, forwards and backwards.
#pragma once

#include "jet/index/TreePages.h"

#include <optional>

namespace jet::index {

// Stands on one entry, or nowhere.
//
//     Cursor cursor(pager, root);
//     for (bool more = cursor.First(); more; more = cursor.Next())
//         Visit(cursor.Key(), cursor.Row());
//
// Requires: the pager outlives it; the index does not change between two steps.
// Errors:   3343 for a page that contradicts itself and for a row of pages without end.
class Cursor {
public:
    Cursor(const pages::Pager& pager, PageNumber root) : pager_(&pager), root_(root) {}

    // All answer whether there is such an entry; when there is none the cursor stands nowhere.
    bool First();
    bool Last();
    // Goes to the first entry that is not less than `entry` (a key and a row's place).
    bool Seek(format::Span entry);
    // Requires: it stands on an entry.
    bool Next();
    bool Previous();

    // Requires (all): it stands on an entry. Rule: valid until the next step.
    [[nodiscard]] format::Span Entry() const { return (*page_)->Entry(at_); }
    [[nodiscard]] format::Span Key() const { return format::KeyPart(Entry()); }
    [[nodiscard]] RowId Row() const { return format::RowPart(Entry()); }

private:
    enum class Side { First, Last };

    bool GoToEdge(Side side);
    bool Enter(PageNumber page);
    bool ToNextPage();
    bool ToPreviousPage();

    const pages::Pager* pager_;
    PageNumber root_;
    std::optional<LoadedPage> page_;
    std::size_t at_ = 0;
    std::uint32_t pagesVisited_ = 0;
};

}  // namespace jet::index
