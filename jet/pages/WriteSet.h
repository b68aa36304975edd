// SPDX-License-Identifier: Apache-2.0
// WriteSet: the pages one writing call changes, written all or not at all.
#pragma once

#include "jet/pages/Pager.h"

#include <functional>
#include <optional>

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
//           Other processes of this engine cannot write while it is open; keep it short.
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

    // Locks the pages, makes sure that what the set was worked out from is still stored, stores the
    // former pages in the journal, writes the set in an order that never leaves anything referring
    // to what is not there, and flushes. On an error nothing of the set is stored. Pages that are
    // to hold what they hold are left alone; of a set without others nothing is written.
    // Errors: those of locks::PageIsLocked at once; 3218 when somebody else wrote meanwhile.
    void Commit();

    [[nodiscard]] Pager& Of() const;

    struct State;

private:
    friend void Write(Pager& pager, const std::function<void(WriteSet&)>& change);
    // What kept a set from being stored: a lock, otherwise what somebody else wrote meanwhile.
    struct Obstacle {
        std::optional<locks::Conflict> lock;
        [[nodiscard]] base::NumberedError Error() const;
    };
    [[nodiscard]] std::optional<Obstacle> TryCommit();
    [[nodiscard]] bool IsUpToDate() const;
    void LeaveOutWhatIsStored();
    [[nodiscard]] std::vector<std::byte> FormerBytes(PageNumber page) const;
    [[nodiscard]] std::optional<std::vector<PageNumber>> RowPages() const;
    void Store();
    [[nodiscard]] bool StoreCounter();
    void Confirm(std::uint16_t word);

    std::unique_ptr<State> state_;
};

// Works out a set by `change` and commits it. While a page is locked or somebody else writes what
// the set is worked out from, all is dropped, and after a pause `change` is called again, on the
// newest pages; as often as Jet tries.
// Rule:   `change` may be called several times, and must not keep what it learned before.
// Errors: those of `change`, WriteSet and locks::PageIsLocked; nothing is written then.
void Write(Pager& pager, const std::function<void(WriteSet&)>& change);

}  // namespace jet::pages
