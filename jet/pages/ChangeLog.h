// SPDX-License-Identifier: Apache-2.0
// ChangeLog: which pages of rows the last write sets changed, as the programs of this engine tell
// each other at the head of the journal.                              docs/format/journal.md
#pragma once

#include "jet/io/File.h"
#include "jet/pages/CommitWords.h"

#include <optional>
#include <vector>

namespace jet::pages {

// Units: bytes of the journal file; the journal proper begins behind them.
inline constexpr std::size_t kChangeLogSize = 4096;

// One confirmed write set.
struct LoggedSet {
    std::uint16_t user = 0;  // place of the commit word that confirmed it
    std::uint16_t word = 0;  // that word
    std::vector<format::PageNumber> rowPages;
};

// Rule: it saves work and is trusted only as far as the commit words bear it out: every word that
//       differs must be explained by the sets that led to it, one by one. What a program that knows
//       no log wrote is never explained, nor what a power cut took out of the log.
class ChangeLog {
public:
    // Adds a set in place of the oldest. A set of too many pages is left out, so that it is not
    // explained. Requires: the journal's lock.
    static void Append(io::File& journal, const LoggedSet& set);

    // The log as it is now; whatever is no log counts as an empty one.
    explicit ChangeLog(const io::File& journal);

    // The pages of rows that were changed on the way from the words `before` to the words `after`;
    // nothing when that is not known. Words of users who are writing count as unchanged.
    [[nodiscard]] std::optional<std::vector<format::PageNumber>>
    RowPagesBetween(const CommitWords& before, const CommitWords& after) const;

private:
    struct Entry {
        std::uint32_t sequence = 0;
        LoggedSet set;
    };
    [[nodiscard]] std::uint32_t Newest() const;
    [[nodiscard]] const LoggedSet* Find(std::uint16_t user, std::uint16_t word) const;

    bool exists_ = false;
    std::vector<Entry> entries_;
};

}  // namespace jet::pages
