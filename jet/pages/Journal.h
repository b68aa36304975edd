// SPDX-License-Identifier: Apache-2.0
// Journal: the former contents of the pages a write set is about to change, kept beside the
// database until the set is whole. docs/format/journal.md
#pragma once

#include "jet/format/PageNumber.h"
#include "jet/io/File.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace jet::pages {

using format::PageNumber;

// One page of a write set that existed before it.
struct JournalEntry {
    PageNumber page = PageNumber::None;
    std::vector<std::byte> before;  // as stored
    std::vector<std::byte> after;   // as it will be stored
};

// Path of the journal that belongs to a database.
[[nodiscard]] std::string JournalPath(const std::string& databasePath);

enum class Recovery { Nothing, RolledBack, SetAside };

// Requires: the file system outlives it. One writer at a time.
class Journal {
public:
    Journal(io::FileSystem& files, std::string databasePath)
        : files_(files), databasePath_(std::move(databasePath))
    {
    }
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    // Undoes an unfinished write set.
    // Rule: only when the journal is whole and every page it names still is, sector by sector, as
    // the
    //       set found it or as the set was leaving it; otherwise the journal is renamed and nothing
    //       is written. A journal that is not whole means that no page was touched.
    Recovery Recover(io::File& database, std::size_t pageSize);

    // Stores former contents and the file's length and flushes. From here on the set can be undone.
    void Begin(std::span<const JournalEntry> entries, std::uint64_t databaseSize,
               std::size_t pageSize);
    // The set is whole: there is nothing to undo any more.
    void End();
    // Undoes the set of the last Begin, wherever it failed, End included.
    // Errors: 3043 when the disk does not let us; the set can still be undone then, here or by the
    // next opener.
    void Undo(io::File& database, std::size_t pageSize);

private:
    void OpenFile();

    io::FileSystem& files_;
    std::string databasePath_;
    std::unique_ptr<io::File> file_;
    bool begun_ = false;  // the journal holds a set that End has not confirmed
};

}  // namespace jet::pages
