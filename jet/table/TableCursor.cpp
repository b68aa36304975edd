// SPDX-License-Identifier: Apache-2.0
#include "jet/table/TableCursor.h"

#include "jet/pages/UsageMap.h"

#include <algorithm>

namespace jet::table {

using format::SlotKind;

namespace {

// Pages that are read together when a scan has come that far; 128 KB.
constexpr std::size_t kAhead = 32;

}  // namespace

TableCursor::TableCursor(pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table)
    : pager_(&pager), table_(std::move(table))
{
    ReadMap();
}

void TableCursor::ReadMap()
{
    changeCount_ = pager_->ChangeCount();
    pages_ = pages::UsageMap(*pager_, table_->ownedPages).Pages();
}

bool TableCursor::Next()
{
    if (pager_->ChangeCount() != changeCount_) Resume();
    while (true) {
        while (view_ && nextSlot_ < view_->SlotCount())
            if (TakeSlot(nextSlot_++)) return true;
        if (!NextPage()) return false;
    }
}

// The page walked last may have been given back; slots before the next one keep their numbers.
void TableCursor::Resume()
{
    ReadMap();
    if (!page_) return;
    const auto place = std::lower_bound(pages_.begin(), pages_.end(), id_.page);
    nextPage_ = static_cast<std::size_t>(place - pages_.begin());
    const std::uint16_t slot = nextSlot_;
    view_.reset();
    if (place == pages_.end() || *place != id_.page) return;
    ++nextPage_;
    TakePage(id_.page);
    nextSlot_ = slot;
}

bool TableCursor::NextPage()
{
    if (nextPage_ >= pages_.size()) return false;
    TakePage(pages_[nextPage_++]);
    // Who looks at few rows shall not wait for many pages.
    const std::size_t ahead = std::min({nextPage_ - 1, pages_.size() - nextPage_, kAhead});
    pager_->Expect(std::span(pages_).subspan(nextPage_, ahead));
    return true;
}

void TableCursor::TakePage(PageNumber page)
{
    page_ = pager_->Read(page);
    view_ = OwnedPage(*page_, Raw(table_->page));
    nextSlot_ = 0;
    id_.page = page;
}

bool TableCursor::TakeSlot(std::uint16_t slot)
{
    const SlotKind kind = view_->Kind(slot);
    if (kind == SlotKind::Moved || kind == SlotKind::Deleted) return false;
    format::Span bytes = view_->Row(slot);
    if (kind == SlotKind::Pointer) {
        FoundRow found = FindMovedRow(*pager_, table_->page, MovedRowId(bytes));
        movedPage_ = std::move(found.page);
        bytes = found.bytes;
    }
    id_.slot = slot;
    row_.emplace(bytes, *table_);
    return true;
}

}  // namespace jet::table
