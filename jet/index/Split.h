// SPDX-License-Identifier: Apache-2.0
// Split: the entries of a page that ran full, cut into pieces that fit.
#pragma once

#include "jet/format/IndexPage.h"

#include <vector>

namespace jet::index {

// What one page holds after a split, and the separator to the next piece (none for the last).
struct Piece {
    format::IndexEntries entries;
    format::PageNumber tail = format::PageNumber::None;
    std::vector<std::byte> separator;
};

// Where the new entry stands that made the page run full.
struct NewEntry {
    std::size_t at = 0;
    bool endsIndex = false;  // it is the last of the whole index
};

// Requires: the content does not fit its page.
// Rule: an entry at the end of the index moves to a page of its own, so that appended keys leave
//       full pages behind; otherwise the page is halved.
[[nodiscard]] std::vector<Piece> SplitLeaf(const format::IndexPageContent& leaf, NewEntry entry,
                                           const format::IndexPageLayout& layout);
// Rule: the middle entry's separator moves up.
[[nodiscard]] std::vector<Piece> SplitNode(const format::IndexPageContent& node,
                                           const format::IndexPageLayout& layout);

}  // namespace jet::index
