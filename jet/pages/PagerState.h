// SPDX-License-Identifier: Apache-2.0
// PagerState: what Pager and WriteSet share: the open file, its journal and the pages kept in
// memory.
#pragma once

#include "jet/format/HeaderPage.h"
#include "jet/pages/CommitWords.h"
#include "jet/pages/Journal.h"
#include "jet/pages/Pager.h"
#include "jet/pages/RecentChanges.h"
#include "jet/pages/WriteSet.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace jet::pages {

using PageBytes = std::vector<std::byte>;

// Pages kept in memory, by number; when there are too many, those that were not asked for longest
// go (second chance).
class PageCache {
public:
    explicit PageCache(std::size_t limit) : limit_(limit) {}

    [[nodiscard]] const std::shared_ptr<const PageBytes>* Find(PageNumber page)
    {
        const std::size_t group = Raw(page) / kGroup;
        if (group >= groups_.size() || !groups_[group]) return nullptr;
        Slot& slot = (*groups_[group])[Raw(page) % kGroup];
        if (!slot.bytes) return nullptr;
        slot.used = true;
        return &slot.bytes;
    }
    void Put(PageNumber page, std::shared_ptr<const PageBytes> bytes);
    void Clear();
    [[nodiscard]] std::size_t Size() const { return count_; }

private:
    struct Slot {
        std::shared_ptr<const PageBytes> bytes;
        bool used = false;
    };
    // Neighbours, so that a few pages of a large file need no list of all its pages.
    static constexpr std::size_t kGroup = 256;
    using Group = std::array<Slot, kGroup>;
    void MakeRoom();

    std::size_t limit_;
    std::size_t count_ = 0;
    std::size_t hand_ = 0;  // the page that is looked at next for one to go
    std::vector<std::unique_ptr<Group>> groups_;
};

// Units: pages kept in memory; 128 MB of the larger ones. Those that a scan reads together are not
// kept.
inline constexpr std::size_t kCachedPages = 32768;
// Of one who only looks, and mostly comes by once.
inline constexpr std::size_t kPagesOfALooker = 2048;

struct Pager::State {
    State(io::FileSystem& files, std::string databasePath, const format::HeaderPage& header,
          locks::Pause pauseBy)
        : path(std::move(databasePath)), version(*header.version), protection(header.protection),
          codePage(header.codePage), pause(std::move(pauseBy)), journal(files, path, pause)
    {
    }

    // The one place where a page comes from the file and goes to it. In an encoded file the stored
    // form, which the journal keeps too, differs from the page.
    [[nodiscard]] PageBytes Load(PageNumber page) const;
    // Whether long walks have come to this page twice before; this is one more. The second walk
    // mostly makes an index in memory, which no third one follows; after a third there will be
    // others, and the page is worth keeping. Requires: the page is in the file.
    [[nodiscard]] bool WasWalkedTwice(PageNumber page);
    [[nodiscard]] PageBytes LoadStored(PageNumber page) const;
    [[nodiscard]] PageBytes StoredForm(PageNumber page, PageBytes bytes) const;
    void Store(PageNumber page, const PageBytes& bytes);
    [[nodiscard]] CommitWords Words() const { return {*file, version}; }
    // Our place among the users.
    [[nodiscard]] std::size_t Place() const { return users ? users->Place() : 0; }
    // Our own commit word, flushed.
    void StoreWord(std::uint16_t word);
    // Takes note of what the words say.
    void Note(const CommitWords& seen);
    // Takes note of what others did to the rows on the way to these words.
    void NoteOthers(const CommitWords& now);
    // Whether another user is writing now; whether one was stopped while he wrote.
    [[nodiscard]] bool SomebodyWrites(const CommitWords& now) const;
    [[nodiscard]] bool SomebodyStopped(const CommitWords& now) const;

    // Notes that the open set was worked out from this page.
    [[nodiscard]] std::shared_ptr<const PageBytes>
    Used(PageNumber page, const std::shared_ptr<const PageBytes>& bytes) const;

    // Undoes the set whose commit failed, if there is one. Errors: 3043.
    void Mend();
    // Undoes what a stopped process left unfinished. Requires: the journal's lock.
    void RollBackOthers();
    void CountPages();

    std::string path;
    const format::FileVersion& version;
    const format::Protection protection;
    const std::uint16_t codePage;
    locks::Pause pause;
    std::shared_ptr<locks::LockFile> users;  // null for one who only looks
    locks::LockFile::Owner session = 0;
    std::unique_ptr<io::File> file;
    bool readOnly = false;
    bool halfWritten = false;           // a commit failed and could not be undone yet
    locks::PageLocks halfWrittenPages;  // of that commit
    std::optional<FormerState> former;  // to a reader: the file before an unfinished set
    Journal journal;
    Recovery recovered = Recovery::Nothing;
    std::uint32_t pageCount = 0;
    RecentChanges changes;
    CommitWords explained;  // the words up to which `changes` knows what others did
    std::uint64_t ownCommits = 0;
    CommitWords words;         // as last seen; our own as last confirmed
    bool othersWrote = false;  // when the words were last seen, somebody else was writing
    std::chrono::milliseconds trust{};
    std::chrono::steady_clock::time_point lastLook;
    mutable std::uint64_t loads = 0;  // how often pages were read from the file
    bool readingWhole = false;
    mutable PageCache cache{kCachedPages};
    std::vector<std::uint8_t> walks;  // over each page; see WasWalkedTwice
    WriteSet::State* openSet = nullptr;
};

struct WriteSet::State {
    explicit State(Pager& owner) : pager(owner) {}

    Pager& pager;
    std::map<PageNumber, std::shared_ptr<PageBytes>> changed;
    // The stored pages that the set was worked out from.
    std::map<PageNumber, std::shared_ptr<const PageBytes>> used;
    locks::PageLocks locks;
    std::uint32_t pageCount = 0;
    bool freed = false;
};

}  // namespace jet::pages
