// SPDX-License-Identifier: Apache-2.0
// PageWalk: pages read one behind the other, as a scan of a table does.
#pragma once

#include "jet/pages/Pager.h"

#include <optional>
#include <vector>

namespace jet::pages {

// Rule: of many pages, those that stand together in the file are read together, and are not kept:
//       a table larger than the memory for pages shall not drive out what is asked for often. A
//       page that stands alone is kept when it is walked over for the third time.
//       Pages read together are as the file was then; who walks on after a change begins anew.
class PageWalk {
public:
    // Requires: the pager outlives it; the pages ascend.
    explicit PageWalk(const Pager& pager) : pager_(&pager) {}

    // Stands before the first of these pages that is not before `from`.
    void Begin(std::vector<PageNumber> pages, PageNumber from = PageNumber::None);
    // Goes to the next page; false at the end. Errors: those of Pager::Read.
    [[nodiscard]] bool Next();

    // Of the page at hand, valid until the next call of Next or Begin.
    [[nodiscard]] PageNumber Number() const { return pages_[next_ - 1]; }
    [[nodiscard]] format::Span Bytes() const { return bytes_; }

private:
    [[nodiscard]] bool TakeFromRun();
    void ReadRun();

    const Pager* pager_;
    std::vector<PageNumber> pages_;
    std::size_t next_ = 0;  // place in pages_ of the page that comes next
    std::size_t begin_ = 0;
    std::vector<std::byte> run_;  // of pages read together
    std::size_t runAt_ = 0;       // place in pages_ of its first page
    std::size_t runLength_ = 0;   // pages
    std::optional<Page> kept_;    // a page that was read alone
    format::Span bytes_;
};

}  // namespace jet::pages
