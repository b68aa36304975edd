// SPDX-License-Identifier: Apache-2.0
// LockFile: the file beside a database in which its users are listed, and the locks they hold on
// its far bytes.                                                       docs/format/lock-file.md
#pragma once

#include "jet/io/File.h"
#include "jet/locks/Conflict.h"
#include "jet/locks/LockBytes.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace jet::locks {

// "Kelvaro.ldb" for "Kelvaro.mdb".
[[nodiscard]] std::string LockFilePath(const std::string& databasePath);

// How often one tries to get a lock, and how long one waits before trying again: at first for as
// short as a store takes, then as long as all wait who know these files; two seconds in all.
inline constexpr int kQuickTries = 7;
inline constexpr int kTries = kQuickTries + 20;
inline constexpr std::chrono::milliseconds kPause{100};
[[nodiscard]] constexpr std::chrono::milliseconds PauseAfter(int tries)
{
    return tries <= kQuickTries ? std::chrono::milliseconds{1 << (tries - 1)} : kPause;
}
using Pause = std::function<void(std::chrono::milliseconds)>;

// One per database and process.
//
// Rule:   locks of one process never meet in the file, so this object counts them. Owners are the
//         process's sessions; a page that one of them keeps is refused to the others.
//         When somebody took the file away, it is made anew and the locks are taken there.
// Errors: 3050 when the file cannot be made or locked.
class LockFile {
public:
    using Owner = std::uint64_t;

    // Takes the lowest free place among the users, or keeps all others out.
    // Requires: the file system outlives it.
    // Errors: 3239 no place is free; somebody has the database to himself: 3356, or 3045 when
    //         nobody knows who; others have it when we want it alone: 3704 or 3045; 3050 also when
    //         the file system grants one lock twice.
    LockFile(io::FileSystem& files, const std::string& databasePath, User self, bool alone,
             const Pause& pause);
    // Gives all locks back, and takes the file away when nobody else is there.
    ~LockFile();
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    // Our place among the users; 0 for one who has the database to himself.
    [[nodiscard]] std::size_t Place() const { return place_; }
    // Whether somebody else holds the place.
    [[nodiscard]] bool IsTaken(std::size_t place) const;

    // The right to write a page; each success needs its Unlock.
    [[nodiscard]] std::optional<Conflict> TryLock(PageNumber page, Owner owner);
    void Unlock(PageNumber page) noexcept;

    // Says that we have a table open (and may write it), by the first page of its definition.
    // Rule: nothing is held when there is a conflict.
    [[nodiscard]] std::optional<Conflict> TryUse(Region region, PageNumber table);
    void EndUse(Region region, PageNumber table) noexcept;
    // Keeps all other programs from having the table open.
    // Requires: this process keeps it once at a time.
    [[nodiscard]] std::optional<Conflict> TryKeep(PageNumber table);
    void EndKeep(PageNumber table) noexcept;
    // Who lets nobody else write the table.
    [[nodiscard]] std::optional<Conflict> FindDenial(PageNumber table) const;

    // Makes sure that others look for our locks where we have them.
    void RequireNamed();

private:
    struct Held {
        Owner owner = 0;
        int count = 0;
    };
    using TableByte = std::pair<Region, PageNumber>;

    void Join(const Pause& pause);
    [[nodiscard]] bool OpenFile();
    [[nodiscard]] bool TakePlace();
    [[nodiscard]] bool TryLock(io::ByteRange range);
    void Unlock(io::ByteRange range) noexcept;
    void TestLocks() const;
    void WriteEntry();
    [[nodiscard]] base::NumberedError Refusal() const;
    [[nodiscard]] std::optional<User> NameOf(std::size_t place) const;
    [[nodiscard]] Conflict ConflictIn(io::ByteRange range, std::uint64_t start) const;

    io::FileSystem& files_;
    std::string databasePath_, path_;
    User self_;
    bool alone_;
    std::unique_ptr<io::File> file_;
    std::size_t place_ = 0;
    std::map<PageNumber, Held> pages_;
    std::map<TableByte, int> tables_;
};

}  // namespace jet::locks
