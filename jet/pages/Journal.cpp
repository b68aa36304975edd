// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/Journal.h"

#include "base/NumberedError.h"
#include "jet/format/HeaderPage.h"
#include "jet/pages/CommitWords.h"

#include <algorithm>
#include <chrono>

namespace jet::pages {

namespace {

using format::Span;

// The lock lasts no longer than a commit, so others look for it often; together as long as Jet
// waits for a lock.
constexpr std::chrono::milliseconds kPause{5};
constexpr int kTries = 400;
// How often a journal that others make and take away is looked for.
constexpr int kLooks = 20;

constexpr std::uint64_t kLockAt = 0x40000000;  // far behind every journal
// A journal that grew beyond this is cut when it is idle. Units: bytes.
constexpr std::uint64_t kKept = 1 << 20;

// The log of changes stands before the journal proper.
constexpr std::uint64_t kBegin = kChangeLogSize;

std::vector<std::byte> ReadAll(const io::File& file)
{
    const std::uint64_t size = file.Size();
    std::vector<std::byte> bytes(static_cast<std::size_t>(size - std::min(size, kBegin)));
    if (!bytes.empty()) file.Read(kBegin, bytes);
    return bytes;
}

// What the commit word of the one who wrote a journal says of its set.
enum class Progress { NotBegun, Behind, Begun, Confirmed, OfAnotherFile };

// Whether a power cut may leave `word` when one of these values is stored over the other.
bool IsBetween(std::uint16_t word, std::uint16_t one, std::uint16_t other)
{
    const auto either = [](int byte, int first, int second) {
        return byte == first || byte == second;
    };
    return either(word & 0xFF, one & 0xFF, other & 0xFF) && either(word >> 8, one >> 8, other >> 8);
}

Progress ProgressOf(const JournalScope& scope, const io::File& database,
                    const format::FileVersion& version)
{
    if (scope.user >= format::kCommitWords) return Progress::OfAnotherFile;
    const std::uint16_t word = CommitWords(database, version).Of(scope.user);
    if (word == kWritingNow) return Progress::Begun;
    if (word == scope.word) return Progress::NotBegun;
    const std::uint16_t confirmed = NextCommitWord(scope.word);
    const std::uint16_t undone = NextCommitWord(confirmed);
    if (word == confirmed || word == undone) return Progress::Confirmed;
    for (const std::uint16_t value : {scope.word, confirmed, undone})
        if (IsBetween(word, value, kWritingNow)) return Progress::Begun;
    // The words of drawn numbers are not flushed; the higher byte of a word always is. So one that
    // is behind, or was torn when the set began, may be that of an earlier number.
    const bool isEarlier = (word & 0xFF) < (scope.word & 0xFF);
    if (isEarlier && word >> 8 == scope.word >> 8) return Progress::Behind;
    if (isEarlier && word >> 8 == kWritingNow >> 8 && word != kMetDamage) return Progress::Begun;
    // Words only grow, so a smaller one is that of an older copy; they go round, after very long.
    constexpr std::uint16_t halfWayRound = 0x8000;
    const auto ahead = static_cast<std::uint16_t>(word - scope.word);
    return ahead < halfWayRound ? Progress::Confirmed : Progress::OfAnotherFile;
}

// How a database stands to the set of a journal.
enum class Found { AsLeft, Between, Strange };

// A page as it is stored; shorter where the file ends.
std::vector<std::byte> PageAt(const io::File& database, std::uint64_t offset, std::size_t pageSize)
{
    const std::uint64_t size = database.Size();
    const std::uint64_t there = size - std::min(size, offset);
    std::vector<std::byte> page(static_cast<std::size_t>(std::min<std::uint64_t>(pageSize, there)));
    if (!page.empty()) database.Read(offset, page);
    return page;
}

// AsLeft: every page is as the set was leaving it. Strange: somebody else changed one of them.
Found Compare(const JournalView& journal, const io::File& database)
{
    const JournalScope scope = journal.Scope();
    const std::uint64_t size = database.Size();
    if (size < scope.sizeBefore || size > scope.sizeAfter) return Found::Strange;
    bool asLeft = size == scope.sizeAfter;
    for (std::size_t i = 0; i < journal.Count(); ++i) {
        const std::uint64_t offset = std::uint64_t{Raw(journal.PageAt(i))} * scope.pageSize;
        std::vector<std::byte> page = PageAt(database, offset, scope.pageSize);
        if (page.size() < scope.pageSize && i < journal.CountOfOld()) return Found::Strange;
        page.resize(scope.pageSize);
        if (!journal.IsOfTheSet(i, page)) return Found::Strange;
        asLeft = asLeft && journal.IsAsLeft(i, page);
    }
    return asLeft ? Found::AsLeft : Found::Between;
}

// Whether every page is as the set found it.
bool IsAsFound(const JournalView& journal, const io::File& database)
{
    const JournalScope scope = journal.Scope();
    if (database.Size() != scope.sizeBefore) return false;
    for (std::size_t i = 0; i < journal.CountOfOld(); ++i) {
        const std::uint64_t offset = std::uint64_t{Raw(journal.PageAt(i))} * scope.pageSize;
        const std::vector<std::byte> page = PageAt(database, offset, scope.pageSize);
        if (page.size() < scope.pageSize || !journal.IsAsFound(i, page)) return false;
    }
    return true;
}

void RollBack(const JournalView& journal, io::File& database)
{
    const JournalScope scope = journal.Scope();
    for (std::size_t i = 0; i < journal.CountOfOld(); ++i)
        database.Write(std::uint64_t{Raw(journal.PageAt(i))} * scope.pageSize, journal.Before(i));
    database.Truncate(scope.sizeBefore);
    database.Flush();
}

}  // namespace

std::string JournalPath(const std::string& databasePath)
{
    return databasePath + ".journal";
}

void Journal::Lock()
{
    for (int i = 0; i < kTries; ++i) {
        if (TryLock()) return;
        pause_(std::min(locks::PauseAfter(i + 1), kPause));
    }
    throw base::NumberedError(3218).At("another program is writing");
}

bool Journal::TryLock()
{
    // Whoever had the lock before may have taken the file away; then it is made anew.
    for (int i = 0; i < kLooks; ++i) {
        try {
            if (!file_)
                file_ =
                    Exists() ? files_.Open(path_, io::OpenMode::ReadWrite) : files_.Create(path_);
        } catch (const base::NumberedError& error) {
            // Another process made it or took it away in this instant.
            if (error.Number() == 3204 || error.Number() == 3024) continue;
            throw;
        }
        if (!file_->TryLock(io::LockKind::Exclusive, kLockAt, 1)) return false;
        locked_ = file_->IsNamed(path_);
        if (locked_) return true;
        file_.reset();
    }
    return false;
}

void Journal::Unlock() noexcept
{
    if (!locked_) return;
    locked_ = false;
    try {
        file_->Unlock(kLockAt, 1);
    } catch (const base::NumberedError&) {
        file_.reset();  // closing gives every lock back
    }
}

bool Journal::IsIdle() const
{
    std::vector<std::byte> magic(kJournalMagicSize);
    if (file_->Size() < kBegin + magic.size()) return true;
    file_->Read(kBegin, magic);
    return format::ReadScalar<std::uint64_t>(magic, 0) != kJournalMagic;
}

void Journal::SetAside()
{
    files_.Rename(path_, path_ + ".set-aside");
    file_.reset();
    locked_ = false;
    Lock();
}

// Nobody shall change the pages between the look at them and their rolling back.
void Journal::LockPages(const JournalView& journal, locks::LockFile& users,
                        locks::PageLocks& into) const
{
    constexpr locks::LockFile::Owner nobodysSession = ~locks::LockFile::Owner{0};
    users.RequireNamed();
    for (std::size_t i = 0; i < journal.CountOfOld(); ++i) {
        for (int tries = 1;; ++tries) {
            const auto conflict = into.TryLock(journal.PageAt(i), nobodysSession);
            if (!conflict || conflict->holder == locks::Conflict::Holder::OwnProcess) break;
            if (tries == locks::kTries) throw PageIsLocked(*conflict);
            pause_(locks::PauseAfter(tries));
        }
    }
}

Recovery Journal::Recover(io::File& database, const format::FileVersion& version,
                          const std::shared_ptr<locks::LockFile>& users)
{
    if (IsIdle()) return Recovery::Nothing;
    const std::vector<std::byte> bytes = ReadAll(*file_);
    const JournalView journal(bytes);
    if (!journal.IsWhole(version.pageSize)) return Recovery::Nothing;
    const JournalScope scope = journal.Scope();
    const Progress progress = ProgressOf(scope, database, version);
    const bool ofAnotherFile = progress == Progress::OfAnotherFile ||
                               (progress == Progress::Behind && !IsAsFound(journal, database));
    if (ofAnotherFile) {
        SetAside();
        return Recovery::SetAside;
    }
    if (progress != Progress::Begun) return Recovery::Nothing;
    if (users && users->IsTaken(scope.user)) return Recovery::Nothing;  // his successor writes
    locks::PageLocks locks(users);
    if (users) LockPages(journal, *users, locks);
    const Found found = Compare(journal, database);
    if (found == Found::Strange) {
        SetAside();
        return Recovery::SetAside;
    }
    // A set that lacks no more than its confirmation stays.
    if (found == Found::Between) RollBack(journal, database);
    // Others may have read pages of the set, and the word that would have confirmed it.
    StoreCommitWord(database, version, scope.user, NextCommitWord(NextCommitWord(scope.word)));
    database.Flush();
    End();
    return found == Found::Between ? Recovery::RolledBack : Recovery::Nothing;
}

std::optional<FormerState> Journal::Former(const io::File& database,
                                           const format::FileVersion& version) const
{
    if (!Exists()) return std::nullopt;
    const std::vector<std::byte> bytes = ReadAll(*files_.Open(path_, io::OpenMode::ReadOnly));
    const JournalView journal(bytes);
    if (!journal.IsWhole(version.pageSize)) return std::nullopt;
    const JournalScope scope = journal.Scope();
    if (ProgressOf(scope, database, version) != Progress::Begun ||
        Compare(journal, database) == Found::Strange)
        return std::nullopt;
    FormerState state;
    state.size = scope.sizeBefore;
    for (std::size_t i = 0; i < journal.CountOfOld(); ++i) {
        const Span before = journal.Before(i);
        state.pages[journal.PageAt(i)].assign(before.begin(), before.end());
    }
    std::vector<std::byte>& header = state.pages[PageNumber{0}];
    header.resize(version.pageSize);
    database.Read(0, header);
    format::WriteU16(header, version.header->commitWords + 2 * scope.user, scope.word);
    return state;
}

void Journal::Tell(const LoggedSet& set) noexcept
{
    try {
        ChangeLog::Append(*file_, set);
    } catch (const base::NumberedError&) {
        return;
    }
}

std::optional<ChangeLog> Journal::Told() const noexcept
{
    try {
        if (file_ && file_->IsNamed(path_)) return ChangeLog(*file_);
        if (Exists()) return ChangeLog(*files_.Open(path_, io::OpenMode::ReadOnly));
    } catch (const base::NumberedError&) {
        return std::nullopt;
    }
    return std::nullopt;
}

void Journal::Begin(std::span<const JournalEntry> entries, const JournalScope& scope)
{
    std::vector<std::byte> bytes = EncodeJournal(entries, scope);
    file_->Write(kBegin, bytes);
    file_->Flush();
    stored_ = std::move(bytes);
}

// Neither flushed nor required: the commit word has made the set whole already.
void Journal::End() noexcept
{
    stored_.clear();
    try {
        if (file_->Size() > kBegin + kKept) {
            file_->Truncate(kBegin);
        } else {
            file_->Write(kBegin, std::vector<std::byte>(kJournalMagicSize));
        }
    } catch (const base::NumberedError&) {
        return;
    }
}

void Journal::Undo(io::File& database) const
{
    RollBack(JournalView(stored_), database);
}

void Journal::Leave(const io::File& database, const format::FileVersion& version) noexcept
{
    if (!file_) return;
    // An idle journal says nothing; one that a failed set left behind is the next opener's. Only
    // he who has the lock may take the file away: another process finds that out and makes it anew.
    try {
        if (!stored_.empty() || !(locked_ || TryLock()) || !file_->IsNamed(path_)) return;
        const std::vector<std::byte> bytes = ReadAll(*file_);
        const JournalView journal(bytes);
        if (journal.IsWhole(version.pageSize) &&
            ProgressOf(journal.Scope(), database, version) == Progress::Begun)
            return;
        files_.Remove(path_);
    } catch (const base::NumberedError&) {
        file_.reset();  // it stays; the next opener finds that it says nothing
    }
}

}  // namespace jet::pages
