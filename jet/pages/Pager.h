// SPDX-License-Identifier: Apache-2.0
// Pager: the pages of one open database file, read through a cache and changed through a WriteSet.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"
#include "jet/format/PageNumber.h"
#include "jet/format/Protection.h"
#include "jet/io/File.h"
#include "jet/locks/PageLocks.h"
#include "jet/pages/Journal.h"

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jet::pages {

using format::PageNumber;

class WriteSet;

// One page's bytes; keeps them alive while it exists. A write set that is stored makes a new Page
// and leaves this one as it was; a page read inside an open set shows the set's further changes.
class Page {
public:
    explicit Page(std::shared_ptr<const std::vector<std::byte>> bytes) : bytes_(std::move(bytes)) {}
    [[nodiscard]] format::Span Bytes() const { return *bytes_; }

private:
    std::shared_ptr<const std::vector<std::byte>> bytes_;
};

// How a database is opened beside others who have it open.
struct Sharing {
    // Looking: only for reading, seen by nobody, stopped by nobody; nothing is left beside the
    //          file.
    enum class Use { Shared, Alone, Looking };

    std::optional<Use> use;  // unless said: Looking for reading, Shared for writing
    locks::User self;        // without a machine it has this machine's name
    locks::Pause pause;      // unless given, it sleeps
    // How long pages may be kept in memory before somebody looks whether others wrote.
    std::chrono::milliseconds trust{250};
};

// The one instance per process and file.
class Pager {
public:
    // Opens a database; rolls back a write set that a stopped process left unfinished.
    // Errors: 3024, 3044, 3051, 3343 (no Jet file), 3031 (another password), and those of Journal
    //         and LockFile; a user was stopped while he wrote: 3343; one has met damage: 3428.
    [[nodiscard]] static std::shared_ptr<Pager> Open(io::FileSystem& files, const std::string& path,
                                                     io::OpenMode mode,
                                                     std::string_view password = {},
                                                     const Sharing& sharing = {});

    // A new file of two pages: the header and the map of free pages. The catalog fills the rest.
    // Errors: 3204 when the file exists, 3044, 3051, 3031 for a password that is too long.
    [[nodiscard]] static std::shared_ptr<Pager> Create(io::FileSystem& files,
                                                       const std::string& path,
                                                       const format::FileVersion& version,
                                                       const format::Protection& protection = {});

    ~Pager();
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;

    // For who opens a file that is open already. Errors: 3031 when the file has another password.
    void RequirePassword(std::string_view password) const;

    [[nodiscard]] const format::FileVersion& Version() const;
    // In which the texts of the file are stored; 0 for UTF-16.
    [[nodiscard]] std::uint16_t CodePage() const;
    [[nodiscard]] const std::string& Path() const;
    [[nodiscard]] bool ReadOnly() const;
    // Pages of the file, those of an open write set included.
    [[nodiscard]] std::uint32_t PageCount() const;

    // The page as the open write set has it, otherwise as it is stored.
    // Errors: 3343 when there is no such page, 3043.
    [[nodiscard]] Page Read(PageNumber page) const;

    // The page will be read next: when it is in memory, the processor begins to fetch it.
    void Announce(PageNumber page) const;

    // Reads those of the first of these pages that stand one behind the other in the file and are
    // not in memory, as they are stored, and keeps none of them. Answers how many: 0 when the first
    // one must be read by Read.
    [[nodiscard]] std::size_t ReadTogether(std::span<const PageNumber> pages,
                                           std::vector<std::byte>& into) const;

    // Counts what may have changed pages: our committed write sets and those of others that we
    // noticed.
    [[nodiscard]] std::uint64_t ChangeCount() const;
    // What it was after the last change that may have touched anything, the design of tables too.
    // Rule: a set that changes rows of the catalog counts among those.
    [[nodiscard]] std::uint64_t LastUnknownChange() const;
    // The pages of rows that were touched since the count was `count`, some perhaps twice; nothing
    // when that is not known.
    [[nodiscard]] std::optional<std::vector<PageNumber>>
    RowPagesChangedSince(std::uint64_t count) const;

    // Whether a write set is open: what is read may never be stored.
    [[nodiscard]] bool IsChanging() const;

    // Counts our own committed write sets.
    [[nodiscard]] std::uint64_t OwnCommits() const;

    // Notices what others wrote since: their pages are read afresh from here on.
    void Refresh();

    // Reads through `read`, which may be called again: when somebody else wrote meanwhile, what it
    // read may be half of one thing and half of another. Waits as long as Jet waits for a lock.
    // Rule: OnlyIfOld does not look for what others wrote before, unless the last look is too old.
    enum class Look { Always, OnlyIfOld };
    void ReadWhole(Look look, const std::function<void()>& read);

    // In whose name pages are locked from here on: a session of this process.
    void ActFor(locks::LockFile::Owner session);
    // The right to write a page until the answer goes. Waits as long as Jet does.
    // Errors: those of locks::PageIsLocked.
    [[nodiscard]] locks::PageLocks LockPage(PageNumber page);
    // Tells others that we have a table open, until the answer goes. Errors: 3189, 3262 and their
    // nameless forms.
    [[nodiscard]] std::shared_ptr<const void> UseTable(PageNumber definition,
                                                       const std::string& name);
    // Keeps other programs from having the table open until the answer goes, so that its design can
    // change. Requires: this process keeps it once at a time. Errors: 3262 or 3009 when one has it.
    [[nodiscard]] std::shared_ptr<const void> KeepTable(PageNumber definition,
                                                        const std::string& name);
    // Errors: 3262 or 3009 when somebody lets nobody else write the table.
    void RequireWritable(PageNumber definition, const std::string& name) const;

    // What was done with the journal of a stopped process: when this file was opened, or when a
    // write set found one later.
    [[nodiscard]] Recovery Recovered() const;

private:
    friend class WriteSet;
    friend void Write(Pager& pager, const std::function<void(WriteSet&)>& change);
    struct State;
    static void Settle(State& state);
    static void RequireSound(const State& state);
    class QuietTime;
    [[nodiscard]] bool TryReadWhole(const std::function<void()>& read);
    explicit Pager(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace jet::pages
