// SPDX-License-Identifier: Apache-2.0
// Journal: the former contents of the pages a write set is about to change, kept beside the
// database until the set is whole.                                    docs/format/journal.md
#pragma once

#include "jet/format/FileVersion.h"
#include "jet/io/File.h"
#include "jet/locks/PageLocks.h"
#include "jet/pages/ChangeLog.h"
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

// One per open database and process. The journal's lock makes the processes of this engine write
// one at a time.
// Rule:     a journal counts as long as the commit word of the one who wrote it says that he
//           writes; the word that says otherwise is what makes a set whole.
// Requires: the file system outlives it.
class Journal {
public:
    Journal(io::FileSystem& files, std::string databasePath, locks::Pause pause)
        : files_(files), path_(JournalPath(databasePath)), pause_(std::move(pause))
    {
    }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    [[nodiscard]] bool Exists() const { return files_.Exists(path_); }

    // Tells the programs of this engine which rows a set changed, before its commit word does.
    // Requires: Lock. Rule: what cannot be told costs the others a look at everything.
    void Tell(const LoggedSet& set) noexcept;
    // What they told; nothing when there is no journal.
    [[nodiscard]] std::optional<ChangeLog> Told() const noexcept;

    // The right to write the database, waited for as long as Jet waits for a lock.
    // Errors: 3218 when another process keeps it, 3051 and 3044 when no file can be made there.
    void Lock();
    void Unlock() noexcept;
    [[nodiscard]] bool IsLocked() const { return locked_; }

    // Undoes the set that a stopped process left unfinished. Requires: Lock.
    // Rule: a journal that belongs to a newer copy of the file is renamed.
    //       A set is undone only when every page of the set still is, sector by sector, as the set
    //       found it or as the set was leaving it; otherwise the journal is renamed and nothing is
    //       written. `users` may be null: then nobody else has the database open.
    // Errors: 3218 and its like when somebody keeps one of the pages locked.
    Recovery Recover(io::File& database, const format::FileVersion& version,
                     const std::shared_ptr<locks::LockFile>& users);
    // What Recover would bring back, for one who may not write.
    [[nodiscard]] std::optional<FormerState> Former(const io::File& database,
                                                    const format::FileVersion& version) const;

    // Stores former contents and the file's length and flushes. From here on the set can be undone.
    // Requires: Lock.
    void Begin(std::span<const JournalEntry> entries, const JournalScope& scope);
    // The set is whole: there is nothing to undo any more.
    void End() noexcept;
    // Puts back what the set of the last Begin changed, and flushes. Requires: Lock.
    // Errors: 3043 when the disk does not let us; it can still be undone then, here or by the next
    //         opener.
    void Undo(io::File& database) const;

    // Takes the file away when it says nothing, before the database is closed.
    void Leave(const io::File& database, const format::FileVersion& version) noexcept;

private:
    [[nodiscard]] bool TryLock();
    // Whether the file holds no set, whole or not.
    [[nodiscard]] bool IsIdle() const;
    void SetAside();
    void LockPages(const JournalView& journal, locks::LockFile& users,
                   locks::PageLocks& into) const;

    io::FileSystem& files_;
    std::string path_;
    locks::Pause pause_;
    std::unique_ptr<io::File> file_;
    bool locked_ = false;
    std::vector<std::byte> stored_;  // the journal of a set that End has not confirmed
};

}  // namespace jet::pages
