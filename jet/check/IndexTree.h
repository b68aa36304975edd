// SPDX-License-Identifier: Apache-2.0
// IndexTree: walks the pages of one index in key order and finds what is wrong with their shape.
#pragma once

#include "jet/check/Inspection.h"
#include "jet/format/IndexPage.h"
#include "jet/format/TableDefinition.h"

#include <functional>

namespace jet::check {

class IndexTree {
public:
    // Told every entry of a leaf, in the order found, and whether the one before has its key.
    using EachEntry = std::function<void(format::Span entry, bool repeats)>;

    IndexTree(Inspection& inspection, const format::TableDefinition& table,
              const format::IndexDefinition& index, std::string name, EachEntry each);

    // Rule: a damaged page is passed over; every page is visited once at most.
    void Walk();

    // Whether every page could be read, so that an entry not met is really missing.
    [[nodiscard]] bool Whole() const { return whole_; }
    // The pages met, in no order.
    [[nodiscard]] const std::vector<PageNumber>& Pages() const { return pages_; }

    // Once more every entry in the order found, with the page it is on. Requires: Walk was called.
    void ForEachEntry(const std::function<void(format::Span entry, PageNumber page)>& visit) const;

private:
    // A page and what it says of its neighbours; of a node, too, the page above it.
    struct Linked {
        PageNumber page, previous, next;
        PageNumber above = PageNumber::None;
    };

    // Where a page hangs. Units: depth in pages below the root.
    struct Place {
        PageNumber from = PageNumber::None;
        std::size_t depth = 0;
        std::uint8_t levelAbove = 0;  // 0 when the page above does not tell
    };

    void WalkPage(PageNumber number, const Place& place);
    void CheckHead(PageNumber number, const format::IndexPageView& view);
    [[nodiscard]] bool CheckLevel(PageNumber number, const format::IndexPageView& view,
                                  const Place& place);
    void WalkLeaf(PageNumber number, const format::IndexPageView& view);
    void WalkNode(PageNumber number, const format::IndexPageView& view, const Place& place);
    void TakeEntry(format::Span entry, PageNumber page);
    void CheckLinks();
    void CheckNodeLinks(const std::vector<Linked>& level);
    void FoundLinks(const Linked& page, PageNumber before, PageNumber after);
    void Found(DefectKind kind, PageNumber page, std::size_t offset, const std::string& what);
    void Broken(DefectKind kind, PageNumber page, const std::string& what);

    Inspection& inspection_;
    const format::TableDefinition& table_;
    const format::IndexDefinition& index_;
    const format::IndexPageLayout& layout_;
    std::string name_;
    EachEntry each_;
    bool whole_ = true;
    std::vector<PageNumber> pages_;
    std::vector<Linked> leaves_;
    std::vector<std::vector<Linked>> nodes_;  // by depth
    std::vector<std::byte> last_;             // the entry met last
    std::vector<std::byte> separator_;        // the separator passed last
};

}  // namespace jet::check
