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

void WriteSet::Commit()
{
    Pager::State& file = *state_->pager.state_;
    if (state_->changed.empty()) return;
    std::vector<std::pair<PageNumber, std::shared_ptr<PageBytes>>> pages(state_->changed.begin(),
                                                                         state_->changed.end());
    std::stable_sort(pages.begin(), pages.end(), [this](const auto& left, const auto& right) {
        return OrderOf(left.first, *left.second, state_->freed) <
               OrderOf(right.first, *right.second, state_->freed);
    });
    const std::size_t pageSize = file.version.pageSize;
    std::vector<JournalEntry> former;
    for (const auto& [page, bytes] : pages)
        if (Raw(page) < file.pageCount)
            former.push_back({page, file.LoadStored(page), file.StoredForm(page, *bytes)});
    try {
        file.journal.Begin(former, *file.file, std::uint64_t{state_->pageCount} * pageSize,
                           pageSize);
        for (const auto& [page, bytes] : pages)
            file.Store(page, *bytes);
        file.CountCommit();
        file.file->Flush();
        file.journal.End();
    } catch (const base::NumberedError&) {
        // Undone at once when the disk lets us, otherwise before anything else is read.
        file.cache.Clear();
        file.halfWritten = true;
        try {
            file.Mend();
        } catch (const base::NumberedError&) {
        }
        throw;
    }
    file.pageCount = state_->pageCount;
    ++file.changeCount;
    file.openSet = nullptr;
    try {
        for (auto& [page, bytes] : pages)
            file.cache.Put(page, std::move(bytes));
    } catch (...) {
        file.cache.Clear();  // what is stored is read again
        throw;
    }
}

}  // namespace jet::pages
