// SPDX-License-Identifier: Apache-2.0
// JournalFormat: the bytes of a journal, written and read.            docs/format/journal.md
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/PageNumber.h"

#include <vector>

namespace jet::pages {

using format::PageNumber;

// One page of a write set.
struct JournalEntry {
    PageNumber page = PageNumber::None;
    std::vector<std::byte> before;  // as stored; nothing for a page behind the end of the file
    std::vector<std::byte> after;   // as it will be stored
    // Where the page keeps its counter of drawn numbers, four bytes; 0 for a page without one.
    std::uint32_t counterAt = 0;
};

// The database a journal was written for. Units: bytes.
struct JournalScope {
    std::uint64_t sizeBefore = 0;  // of the database
    std::uint64_t sizeAfter = 0;   // when the set is whole
    std::size_t pageSize = 0;
    std::size_t user = 0;    // who wrote it: the place of his commit word
    std::uint16_t word = 0;  // that word before the set
};

// The first bytes; zeros once the set is whole.
inline constexpr std::uint64_t kJournalMagic = 0x344A6E6972646F4CULL;  // "LodrinJ4"
inline constexpr std::size_t kJournalMagicSize = 8;

[[nodiscard]] std::vector<std::byte> EncodeJournal(std::span<const JournalEntry> entries,
                                                   const JournalScope& scope);

// A view. Requires: the bytes outlive it.
class JournalView {
public:
    explicit JournalView(format::Span bytes) : bytes_(bytes) {}

    // Whether the journal was stored to its last byte.
    // Rule: nothing else may be asked of one that is not.
    [[nodiscard]] bool IsWhole(std::size_t pageSize) const;

    [[nodiscard]] JournalScope Scope() const;
    // Entries of pages that existed come first, then those of pages behind the end of the file.
    [[nodiscard]] std::size_t Count() const;
    [[nodiscard]] std::size_t CountOfOld() const;
    [[nodiscard]] PageNumber PageAt(std::size_t entry) const;
    // Requires: an entry of a page that existed.
    [[nodiscard]] format::Span Before(std::size_t entry) const;
    // Whether each sector of the page `found` is as the set found it (zeros, where no page was) or
    // as the set was leaving it.
    // Rule: whatever a counter says is as the set found it: drawn numbers are not flushed.
    [[nodiscard]] bool IsOfTheSet(std::size_t entry, format::Span found) const;
    // Whether the whole page is as the set found it. Requires: an entry of a page that existed.
    [[nodiscard]] bool IsAsFound(std::size_t entry, format::Span found) const;
    // Whether the whole page is as the set was leaving it.
    [[nodiscard]] bool IsAsLeft(std::size_t entry, format::Span found) const;

private:
    [[nodiscard]] bool IsAsLeft(std::size_t entry, std::size_t at, format::Span sector) const;
    [[nodiscard]] bool IsAsFound(std::size_t entry, std::size_t at, format::Span sector) const;
    [[nodiscard]] std::size_t Start(std::size_t entry) const;
    [[nodiscard]] std::size_t PageSize() const;

    format::Span bytes_;
};

}  // namespace jet::pages
