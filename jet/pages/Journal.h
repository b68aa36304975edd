// SPDX-License-Identifier: Apache-2.0
// Journal: the former contents of the pages a write set is about to change, kept beside the
// database until the set is whole.                                    docs/format/journal.md
#pragma once

#include "jet/io/File.h"
#include "jet/pages/JournalFormat.h"

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace jet::pages {

// Path of the journal that belongs to a database.
[[nodiscard]] std::string JournalPath(const std::string& databasePath);

enum class Recovery { Nothing, RolledBack, SetAside };

// A database as it was before a set that is not whole.
struct FormerState {
    std::map<PageNumber, std::vector<std::byte>> pages;
    std::uint64_t size = 0;  // bytes
};

// One per open database and process. The journal's lock makes all processes write one at a time.
// Requires: the file system outlives it.
class Journal {
public:
    Journal(io::FileSystem& files, std::string databasePath)
        : files_(files), path_(JournalPath(databasePath))
    {
    }
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    [[nodiscard]] bool Exists() const { return files_.Exists(path_); }

    // The right to write the database, waited for as long as Jet does.
    // Errors: 3218 when another process keeps it, 3051 and 3044 when no file can be made there.
    void Lock();
    void Unlock() noexcept;

    // Undoes the set that a stopped process left unfinished. Requires: Lock.
    // Rule: only when the journal is whole, nobody else has committed since, and every page it
    //       names still is, sector by sector, as the set found it or as the set was leaving it;
    //       otherwise the journal is renamed and nothing is written. A journal that is not whole
    //       means that no page was touched.
    Recovery Recover(io::File& database, std::size_t pageSize);
    // What Recover would bring back, for one who may not write.
    [[nodiscard]] std::optional<FormerState> Former(const io::File& database,
                                                    std::size_t pageSize) const;

    // Stores former contents and the file's length and flushes. From here on the set can be undone.
    // Requires: Lock.
    void Begin(std::span<const JournalEntry> entries, const io::File& database,
               std::uint64_t sizeAfter, std::size_t pageSize);
    // The set is whole: there is nothing to undo any more.
    void End();
    // Undoes the set of the last Begin, wherever it failed, End included. Requires: Lock.
    // Errors: 3043 when the disk does not let us; the set can still be undone then, here or by the
    //         next opener.
    void Undo(io::File& database);

private:
    [[nodiscard]] bool TryLock();
    // Whether the file holds no set, whole or not.
    [[nodiscard]] bool IsIdle() const;

    io::FileSystem& files_;
    std::string path_;
    std::unique_ptr<io::File> file_;
    bool locked_ = false;
    std::vector<std::byte> stored_;  // the journal of a set that End has not confirmed
};

}  // namespace jet::pages
