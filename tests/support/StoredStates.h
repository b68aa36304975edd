// SPDX-License-Identifier: Apache-2.0
// StoredStates: what a database holds, and held after each store of an undisturbed piece of work.
#pragma once

#include "jet/io/MemoryFile.h"
#include "tests/support/ShopActs.h"
#include "tests/support/ShopWorld.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tests {

// The design of every table, and its rows.
struct WholeDatabase {
    std::vector<std::string> designs;
    Contents rows;

    friend bool operator==(const WholeDatabase&, const WholeDatabase&) = default;
};

// What the next program to open it finds. Errors: those of opening a database.
[[nodiscard]] WholeDatabase WholeIn(ShopWorld& world);

// One act, done without a disturbance in memory, from the opening of the shop to its closing.
//
// Rule: a state is taken from the database file alone, without its journal, whenever all commit
//       words in it say that no set is being written; so what undoes a set has no part in it.
class ActHistory {
public:
    ActHistory(const ShopAct& act, FileKind kind);

    // The database before it.
    [[nodiscard]] const std::vector<std::byte>& Made() const { return made_; }
    // Writes, flushes, truncations, creations, removals and renames of the whole act.
    [[nodiscard]] std::size_t Operations() const { return moments_.size(); }
    // Different states, the one before the act included.
    [[nodiscard]] std::size_t States() const { return states_.size(); }
    // Whether not one byte of the database was changed by the act.
    [[nodiscard]] bool FileStays() const { return lastWhole_ == made_; }

    // Empty when `found` is what a machine may find that was stopped at this operation: a state,
    // the newest that was stored before it or the one that was being stored. Otherwise what is
    // wrong. `flushedOnly`: the newest that was flushed, for a disk that loses what was not.
    [[nodiscard]] std::string Objection(const WholeDatabase& found, std::size_t operation,
                                        bool flushedOnly) const;

private:
    // How many states there were when the operation began.
    struct Moment {
        std::size_t stored = 0, flushed = 0;
    };
    void Watch(const std::string& call, const std::vector<std::byte>& database);

    std::vector<std::byte> made_;
    std::vector<std::byte> lastWhole_;
    std::vector<WholeDatabase> states_;
    std::vector<Moment> moments_;
    std::string lastCall_;
    std::size_t flushed_ = 1;
};

// Whether a disk is told of a change or a flush by this call of WatchedFileSystem.
[[nodiscard]] bool IsOperation(const std::string& call);

// The database at its place in a memory.
void PutDatabase(jet::io::MemoryFileSystem& disk, const std::vector<std::byte>& content);

}  // namespace tests
