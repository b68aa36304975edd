// SPDX-License-Identifier: Apache-2.0
// ExpectedEntries: which entries the rows of a table want in one of its indexes, as a sum that the
// entries of a sound index have too.
#pragma once

#include "jet/check/Defect.h"
#include "jet/check/RowKey.h"

#include <cstdint>
#include <vector>

namespace jet::check {

// Stands for a set of entries, in whatever order they come.
// Rule: two sets that differ have one sum once in 2^64 cases; never when one has an entry more, or
//       when two entries of one length differ in one word of eight bytes.
class EntrySum {
public:
    void Add(format::Span entry);
    friend bool operator==(const EntrySum&, const EntrySum&) = default;

private:
    std::uint64_t count_ = 0, sum_ = 0;
};

// Requires: table and index outlive it.
class ExpectedEntries {
public:
    ExpectedEntries(const format::TableDefinition& table, const format::IndexDefinition& index);

    // A row by its original slot.
    void Take(RowId at, const format::RowView& row);
    // A row that cannot be read.
    void TakeUnreadable() { doubtful_ = true; }

    // To be called when all rows were taken.
    void Close();

    // What the index says. Rule: of a row that cannot be keyed its place alone counts.
    void AddMet(format::Span entry, EntrySum& met) const;

    // Whether an index with those entries has the ones it should have, with the keys they should
    // have, and no null where none may be. When not, each entry has to be looked at.
    [[nodiscard]] bool Agree(const EntrySum& met) const { return !doubtful_ && met == wanted_; }

private:
    const format::IndexDefinition& index_;
    KeyMaker maker_;
    RowKey key_;
    EntrySum wanted_;
    bool doubtful_ = false;
    std::vector<RowId> keyless_;  // rows that cannot be keyed, ascending once closed
};

}  // namespace jet::check
