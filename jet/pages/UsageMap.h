// SPDX-License-Identifier: Apache-2.0
// UsageMap: a set of pages (those a table owns, those with free space, those of an index).
#pragma once

#include "jet/pages/WriteSet.h"

#include <vector>

namespace jet::pages {

// The map row at `where`, inline or spread over bitmap pages.
// Errors: 3343 when the map lies.
class UsageMap {
public:
    UsageMap(Pager& pager, format::RowId where) : pager_(pager), where_(where) {}

    [[nodiscard]] bool Contains(PageNumber page) const;
    // In ascending order.
    [[nodiscard]] std::vector<PageNumber> Pages() const;
    // The last page, PageNumber::None when the map is empty.
    [[nodiscard]] PageNumber Last() const;

    // Add changes the map's form when the page does not fit into the present one.
    void Add(WriteSet& changes, PageNumber page);
    void Remove(WriteSet& changes, PageNumber page);

    // A new empty map row on the usage-map page `page` (which has room). Returns its place.
    [[nodiscard]] static format::RowId Make(WriteSet& changes, PageNumber page);
    // Takes an empty map's row away, and its bitmap pages. Rule: its slot stays, as a deleted one.
    static void Drop(WriteSet& changes, format::RowId where);

private:
    Pager& pager_;
    format::RowId where_;
};

}  // namespace jet::pages
