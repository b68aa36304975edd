// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/Journal.h"

#include "base/NumberedError.h"
#include "jet/format/HeaderPage.h"
#include "jet/pages/Checksum.h"

#include <chrono>
#include <thread>

namespace jet::pages {

namespace {

using format::Span;

// How long and how often Jet tries to get a lock.
constexpr int kTries = 20;
constexpr std::chrono::milliseconds kPause{100};

constexpr std::uint64_t kLockAt = 0x40000000;  // far behind every journal
// A journal that grew beyond this is cut when it is idle. Units: bytes.
constexpr std::uint64_t kKept = 1 << 20;

std::vector<std::byte> ReadAll(const io::File& file)
{
    std::vector<std::byte> bytes(static_cast<std::size_t>(file.Size()));
    file.Read(0, bytes);
    return bytes;
}

// The commit words of everybody but the first user, whose word this engine counts up itself.
// They are the last of page 0, whatever its size.
std::uint32_t OtherWords(const io::File& database, std::size_t pageSize)
{
    std::vector<std::byte> words(format::kCommitWordBytes - 2);
    database.Read(pageSize - words.size(), words);
    return Checksum(words);
}

bool BelongsTo(const JournalView& journal, const io::File& database)
{
    const JournalScope scope = journal.Scope();
    const std::uint64_t size = database.Size();
    if (size < scope.sizeBefore || size > scope.sizeAfter) return false;
    if (OtherWords(database, scope.pageSize) != scope.otherWords) return false;
    std::vector<std::byte> found(scope.pageSize);
    for (std::size_t i = 0; i < journal.Count(); ++i) {
        const std::uint64_t offset = std::uint64_t{Raw(journal.PageAt(i))} * scope.pageSize;
        if (offset + scope.pageSize > size) return false;
        database.Read(offset, found);
        if (!journal.IsOfTheSet(i, found)) return false;
    }
    return true;
}

void RollBack(const JournalView& journal, io::File& database)
{
    const JournalScope scope = journal.Scope();
    for (std::size_t i = 0; i < journal.Count(); ++i)
        database.Write(std::uint64_t{Raw(journal.PageAt(i))} * scope.pageSize, journal.Before(i));
    database.Truncate(scope.sizeBefore);
    database.Flush();
}

}  // namespace

std::string JournalPath(const std::string& databasePath)
{
    return databasePath + ".journal";
}

Journal::~Journal()
{
    if (!file_) return;
    // An idle journal says nothing; one that a failed set left behind is the next opener's. Only
    // he who has the lock may take the file away: another process finds that out and makes it anew.
    try {
        if (stored_.empty() && (locked_ || TryLock()) && IsIdle() && file_->IsNamed(path_))
            files_.Remove(path_);
    } catch (const base::NumberedError&) {
        file_.reset();  // it stays; the next opener finds it idle
    }
}

void Journal::Lock()
{
    for (int i = 0; i < kTries; ++i) {
        if (TryLock()) return;
        std::this_thread::sleep_for(kPause);
    }
    throw base::NumberedError(3218).At("another program is writing");
}

bool Journal::TryLock()
{
    // Whoever had the lock before may have taken the file away; then it is made anew.
    for (int i = 0; i < kTries; ++i) {
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
    if (file_->Size() < magic.size()) return true;
    file_->Read(0, magic);
    return format::ReadScalar<std::uint64_t>(magic, 0) != kJournalMagic;
}

Recovery Journal::Recover(io::File& database, std::size_t pageSize)
{
    if (IsIdle()) return Recovery::Nothing;
    const std::vector<std::byte> bytes = ReadAll(*file_);
    const JournalView journal(bytes);
    if (!journal.IsWhole(pageSize)) return Recovery::Nothing;
    if (!BelongsTo(journal, database)) {
        files_.Rename(path_, path_ + ".set-aside");
        file_.reset();
        locked_ = false;
        Lock();
        return Recovery::SetAside;
    }
    RollBack(journal, database);
    End();
    return Recovery::RolledBack;
}

std::optional<FormerState> Journal::Former(const io::File& database, std::size_t pageSize) const
{
    if (!Exists()) return std::nullopt;
    const std::vector<std::byte> bytes = ReadAll(*files_.Open(path_, io::OpenMode::ReadOnly));
    const JournalView journal(bytes);
    if (!journal.IsWhole(pageSize) || !BelongsTo(journal, database)) return std::nullopt;
    FormerState state;
    state.size = journal.Scope().sizeBefore;
    for (std::size_t i = 0; i < journal.Count(); ++i) {
        const Span before = journal.Before(i);
        state.pages[journal.PageAt(i)].assign(before.begin(), before.end());
    }
    return state;
}

void Journal::Begin(std::span<const JournalEntry> entries, const io::File& database,
                    std::uint64_t sizeAfter, std::size_t pageSize)
{
    std::vector<std::byte> bytes =
        EncodeJournal(entries, {.sizeBefore = database.Size(),
                                .sizeAfter = sizeAfter,
                                .pageSize = pageSize,
                                .otherWords = OtherWords(database, pageSize)});
    file_->Write(0, bytes);
    stored_ = std::move(bytes);
    file_->Flush();
}

void Journal::End()
{
    if (file_->Size() > kKept) {
        file_->Truncate(0);
    } else {
        file_->Write(0, std::vector<std::byte>(kJournalMagicSize));
    }
    file_->Flush();
    stored_.clear();
}

void Journal::Undo(io::File& database)
{
    if (stored_.empty()) return;
    // End may have got as far as calling the set whole.
    file_->Write(0, stored_);
    file_->Flush();
    RollBack(JournalView(stored_), database);
    End();
}

}  // namespace jet::pages
