// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/WriteSet.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
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
        ++file.changeCount;
        return Obstacle{};
    }
    Store();
    return std::nullopt;
}

// Programs that know no journal may have written since the set was begun.
bool WriteSet::IsUpToDate() const
{
    const Pager::State& file = *state_->pager.state_;
    if (file.file->Size() / file.version.pageSize != file.pageCount) return false;
    const auto same = [&file](const auto& used) { return file.Load(used.first) == *used.second; };
    return std::all_of(state_->used.begin(), state_->used.end(), same);
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
        entries.push_back({page, Raw(page) < file.pageCount ? file.LoadStored(page) : PageBytes(),
                           file.StoredForm(page, *bytes)});
    const std::uint16_t word = file.words.Of(file.Place());
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
        // The set is whole with this word.
        file.StoreWord(NextCommitWord(word));
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
    file.words.Set(file.Place(), NextCommitWord(word));
    file.pageCount = state_->pageCount;
    ++file.changeCount;
    ++file.ownCommits;
    file.openSet = nullptr;
    state_->locks.Clear();
    try {
        for (auto& [page, bytes] : pages)
            file.cache.Put(page, std::move(bytes));
    } catch (...) {
        file.cache.Clear();  // what is stored is read again
        throw;
    }
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
        file.pause(locks::kPause);
    }
}

}  // namespace jet::pages
