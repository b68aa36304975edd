// SPDX-License-Identifier: Apache-2.0
// WriteSet: the pages one writing call changes, written all or not at all.
#pragma once

#include "jet/pages/Pager.h"

namespace jet::pages {

// Collects changed pages; nothing reaches the file before Commit.
//
//     WriteSet changes(pager);
//     format::WriteU16(changes.Change(page), 2, freeBytes);
//     changes.Commit();
//
// Requires: no other write set is open on this pager.
// Rule:     while it is open, Pager::Read answers the changed pages. Destroyed uncommitted, it
//           leaves file and cache as they were.
//           Other processes cannot write while it is open; keep it short.
// Errors:   3027 for a read-only database, 3218 when another process keeps writing.
class WriteSet {
public:
    explicit WriteSet(Pager& pager);
    ~WriteSet();
    WriteSet(const WriteSet&) = delete;
    WriteSet& operator=(const WriteSet&) = delete;

    // The set's own copy of a page, to be changed in place; stays valid until Commit.
    [[nodiscard]] format::MutableSpan Change(PageNumber page);

    // A zeroed page of this set behind page `above`, taken out of the file's map of free pages; the
    // file grows when there is none. Errors: 3036 when the file would pass 2 GB.
    [[nodiscard]] PageNumber Allocate(PageNumber above = PageNumber::None);
    // A zeroed page behind the end of the file, whatever the map of free pages says; for the map
    // itself.
    [[nodiscard]] PageNumber AppendPage();
    // Gives a page back to the map of free pages.
    void Free(PageNumber page);

    // Stores the former pages in the journal, writes the set in an order that never leaves anything
    // referring to what is not there, and flushes. On an error nothing of the set is stored.
    void Commit();

    [[nodiscard]] Pager& Of() const;

    struct State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace jet::pages
