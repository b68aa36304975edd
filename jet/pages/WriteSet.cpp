// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/WriteSet.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/pages/FreePages.h"
#include "jet/pages/PagerState.h"

#include <algorithm>
#include <cassert>

namespace jet::pages {

namespace {

enum class WriteOrder {
    MapsThatTakePages,
    LongValues,
    Rows,
    Indexes,
    Definitions,
    MapsThatGivePages
};

bool IsUsageMap(PageNumber page, format::Span bytes)
{
    constexpr std::uint8_t bitmapPage = 5;
    const std::uint8_t type = format::ReadU8(bytes, 0);
    if (Raw(page) == 1 || type == bitmapPage) return true;
    return type == format::kDataPageType &&
           format::ReadU32(bytes, format::DataPageLayoutOf(bytes).owner) == 0;
}

// A thing is written before what refers to it, for readers that know no journal.
WriteOrder OrderOf(PageNumber page, format::Span bytes, bool freed)
{
    if (IsUsageMap(page, bytes))
        return freed ? WriteOrder::MapsThatGivePages : WriteOrder::MapsThatTakePages;
    switch (format::ReadU8(bytes, 0)) {
    case 2:
        return WriteOrder::Definitions;
    case 3:
    case 4:
        return WriteOrder::Indexes;
    default:
        break;
    }
    const std::uint32_t owner = format::ReadU32(bytes, format::DataPageLayoutOf(bytes).owner);
    return owner == format::kLongValueOwner ? WriteOrder::LongValues : WriteOrder::Rows;
}

constexpr std::uint32_t kCounterSize = 4;

// Where a page of a table's definition keeps the counter of drawn numbers; 0 for other pages.
std::uint32_t CounterAt(format::Span page, const format::FileVersion& version)
{
    constexpr std::uint8_t definition = 2;
    if (format::ReadU8(page, 0) != definition) return 0;
    return static_cast<std::uint32_t>(version.definition->table.autoNumber);
}

}  // namespace

WriteSet::WriteSet(Pager& pager) : state_(std::make_unique<State>(pager))
{
    Pager::State& file = *pager.state_;
    if (file.readOnly) throw base::NumberedError(3027);
    assert(file.openSet == nullptr);
    file.Mend();
    file.journal.Lock();
    try {
        file.RollBackOthers();
        pager.Refresh();
    } catch (const base::NumberedError&) {
        file.journal.Unlock();
        throw;
    }
    state_->pageCount = file.pageCount;
    file.openSet = state_.get();
}

WriteSet::~WriteSet()
{
    Pager::State& file = *state_->pager.state_;
    if (file.openSet == state_.get()) file.openSet = nullptr;
    // Nobody else may write before a half-written set is undone.
    if (!file.halfWritten) file.journal.Unlock();
}

format::MutableSpan WriteSet::Change(PageNumber page)
{
    assert(page != PageNumber::None);  // other users write page 0 too
    const auto found = state_->changed.find(page);
    if (found != state_->changed.end()) return *found->second;
    const Page stored = state_->pager.Read(page);
    const auto own = std::make_shared<PageBytes>(stored.Bytes().begin(), stored.Bytes().end());
    state_->changed[page] = own;
    return *own;
}

PageNumber WriteSet::Allocate(PageNumber above)
{
    const PageNumber page = TakeFreePage(*this, above);
    state_->changed[page] = std::make_shared<PageBytes>(state_->pager.Version().pageSize);
    return page;
}

PageNumber WriteSet::AppendPage()
{
    const PageNumber page{state_->pageCount};
    const format::FileVersion& version = state_->pager.Version();
    const std::size_t pageSize = version.pageSize;
    if ((std::uint64_t{Raw(page)} + 1) * pageSize > version.fileLimit)
        throw base::NumberedError(3036).At("the file would pass its format's limit");
    ++state_->pageCount;
    state_->changed[page] = std::make_shared<PageBytes>(pageSize);
    return page;
}

void WriteSet::Free(PageNumber page)
{
    GiveFreePage(*this, page);
    state_->freed = true;
}

Pager& WriteSet::Of() const
{
    return state_->pager;
}

base::NumberedError WriteSet::Obstacle::Error() const
{
    if (lock) return locks::PageIsLocked(*lock);
    return base::NumberedError(3218).At("another user wrote meanwhile");
}

void WriteSet::Commit()
{
    if (const auto obstacle = TryCommit()) throw obstacle->Error();
}

std::optional<WriteSet::Obstacle> WriteSet::TryCommit()
{
    Pager::State& file = *state_->pager.state_;
    if (state_->changed.empty()) return std::nullopt;
    if (file.users) file.users->RequireNamed();
    state_->locks = locks::PageLocks(file.users);
    // Pages behind the end nobody can reach but through the map of free pages, which is locked.
    for (const auto& [page, bytes] : state_->changed) {
        if (Raw(page) >= file.pageCount) break;
        if (auto conflict = state_->locks.TryLock(page, file.session))
            return Obstacle{std::move(conflict)};
    }
    if (!IsUpToDate()) {
        file.cache.Clear();
        file.changes.Add(std::nullopt);
        return Obstacle{};
    }
    LeaveOutWhatIsStored();
    if (!state_->changed.empty() && !StoreCounter()) Store();
    return std::nullopt;
}

// Programs that know no journal may have written since the set was begun.
bool WriteSet::IsUpToDate() const
{
    const Pager::State& file = *state_->pager.state_;
    if (file.file->Size() / file.version.pageSize != file.pageCount) return false;
    const auto same = [&file](const auto& used) {
        return format::SameBytes(file.Load(used.first), *used.second);
    };
    return std::all_of(state_->used.begin(), state_->used.end(), same);
}

// A page that is to hold what it holds needs no store: a record is often given the values it has.
void WriteSet::LeaveOutWhatIsStored()
{
    const Pager::State& file = *state_->pager.state_;
    std::erase_if(state_->changed, [&](const auto& change) {
        const auto& [page, bytes] = change;
        if (Raw(page) >= file.pageCount) return false;
        const auto used = state_->used.find(page);
        return used != state_->used.end() && format::SameBytes(*bytes, *used->second);
    });
}

// The page as the file holds it; nothing where the file ended. Requires: IsUpToDate.
std::vector<std::byte> WriteSet::FormerBytes(PageNumber page) const
{
    const Pager::State& file = *state_->pager.state_;
    if (Raw(page) >= file.pageCount) return {};
    const auto used = state_->used.find(page);
    return used == state_->used.end() ? file.LoadStored(page)
                                      : file.StoredForm(page, *used->second);
}

// The changed pages that hold rows, or did; nothing of a set that changes the catalog, for it may
// change what every page means.
std::optional<std::vector<PageNumber>> WriteSet::RowPages() const
{
    constexpr std::uint32_t catalog = 2;
    std::vector<PageNumber> pages;
    for (const auto& [page, bytes] : state_->changed) {
        if (OrderOf(page, *bytes, false) != WriteOrder::Rows) continue;
        if (format::ReadU32(*bytes, format::DataPageLayoutOf(*bytes).owner) == catalog)
            return std::nullopt;
        pages.push_back(page);
    }
    return pages;
}

void WriteSet::Store()
{
    Pager::State& file = *state_->pager.state_;
    std::vector<std::pair<PageNumber, std::shared_ptr<PageBytes>>> pages(state_->changed.begin(),
                                                                         state_->changed.end());
    std::stable_sort(pages.begin(), pages.end(), [this](const auto& left, const auto& right) {
        return OrderOf(left.first, *left.second, state_->freed) <
               OrderOf(right.first, *right.second, state_->freed);
    });
    std::vector<JournalEntry> entries;
    for (const auto& [page, bytes] : pages)
        entries.push_back({page, FormerBytes(page), file.StoredForm(page, *bytes),
                           CounterAt(*bytes, file.version)});
    const std::uint16_t word = file.words.Of(file.Place());
    const std::uint16_t confirmed = NextCommitWord(word);
    file.journal.Begin(entries,
                       {.sizeBefore = file.file->Size(),
                        .sizeAfter = std::uint64_t{state_->pageCount} * file.version.pageSize,
                        .pageSize = file.version.pageSize,
                        .user = file.Place(),
                        .word = word});
    try {
        file.StoreWord(kWritingNow);
        for (const auto& [page, bytes] : pages)
            file.Store(page, *bytes);
        file.file->Flush();
        if (const auto rowPages = RowPages())
            file.journal.Tell({static_cast<std::uint16_t>(file.Place()), confirmed, *rowPages});
        // The set is whole with this word.
        file.StoreWord(confirmed);
    } catch (const base::NumberedError&) {
        // Undone at once when the disk lets us, otherwise before anything else is read.
        file.cache.Clear();
        file.halfWritten = true;
        file.halfWrittenPages = std::move(state_->locks);
        try {
            file.Mend();
        } catch (const base::NumberedError&) {
        }
        throw;
    }
    file.journal.End();
    Confirm(confirmed);
}

// The set is stored: everybody who asks is given its pages from here on.
void WriteSet::Confirm(std::uint16_t word)
{
    Pager::State& file = *state_->pager.state_;
    file.words.Set(file.Place(), word);
    file.explained.Set(file.Place(), word);
    file.pageCount = state_->pageCount;
    file.changes.Add(RowPages());
    ++file.ownCommits;
    file.openSet = nullptr;
    state_->locks.Clear();
    try {
        for (auto& [page, bytes] : state_->changed)
            file.cache.Put(page, std::move(bytes));
    } catch (...) {
        file.cache.Clear();  // what is stored is read again
        throw;
    }
}

namespace {

// Where the bytes differ; nothing when they are the same. Requires: as many bytes in both.
std::optional<io::ByteRange> Difference(format::Span one, format::Span other)
{
    const auto first = std::mismatch(one.begin(), one.end(), other.begin()).first;
    if (first == one.end()) return std::nullopt;
    const auto last = std::mismatch(one.rbegin(), one.rend(), other.rbegin()).first;
    return io::ByteRange{static_cast<std::uint64_t>(first - one.begin()),
                         static_cast<std::uint64_t>(last.base() - first)};
}

}  // namespace

// A set that draws a number and does nothing else needs neither journal nor flush: a number that a
// power cut takes back was given to no row that is stored. False for every other set.
bool WriteSet::StoreCounter()
{
    Pager::State& file = *state_->pager.state_;
    if (state_->changed.size() != 1) return false;
    const auto& [page, bytes] = *state_->changed.begin();
    const std::uint32_t counterAt = CounterAt(*bytes, file.version);
    if (counterAt == 0 || Raw(page) >= file.pageCount) return false;
    const PageBytes after = file.StoredForm(page, *bytes);
    const auto changed = Difference(after, FormerBytes(page));
    if (!changed || changed->offset < counterAt ||
        changed->offset + changed->length > counterAt + kCounterSize)
        return false;
    const std::uint16_t word = file.words.Of(file.Place());
    const std::uint16_t confirmed = NextCommitWord(word);
    // Unflushed words that differ in one byte cannot be mistaken for others after a power cut.
    if (confirmed >> 8 != word >> 8) return false;
    file.file->Write(std::uint64_t{Raw(page)} * file.version.pageSize + changed->offset,
                     format::Span(after).subspan(changed->offset, changed->length));
    file.journal.Tell({static_cast<std::uint16_t>(file.Place()), confirmed, {}});
    StoreCommitWord(*file.file, file.version, file.Place(), confirmed);
    Confirm(confirmed);
    return true;
}

namespace {

// Whether a set that failed may succeed on pages that nobody is writing.
bool MayBeHalfRead(const base::NumberedError& error)
{
    return error.Number() == 3343 || error.Number() == 3049 || error.Number() == 3043;
}

}  // namespace

void Write(Pager& pager, const std::function<void(WriteSet&)>& change)
{
    Pager::State& file = *pager.state_;
    for (int tries = 1;; ++tries) {
        try {
            WriteSet changes(pager);
            change(changes);
            const auto obstacle = changes.TryCommit();
            if (!obstacle) return;
            const bool ownProcess =
                obstacle->lock && obstacle->lock->holder == locks::Conflict::Holder::OwnProcess;
            if (ownProcess || tries == locks::kTries) throw obstacle->Error();
        } catch (const base::NumberedError& error) {
            const bool again = MayBeHalfRead(error) && !file.halfWritten && tries < locks::kTries &&
                               file.Words() != file.words;
            if (!again) throw;
        }
        file.pause(locks::PauseAfter(tries));
    }
}

}  // namespace jet::pages
