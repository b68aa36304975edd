// SPDX-License-Identifier: Apache-2.0
#include "jet/table/ListedCursor.h"

#include <algorithm>

namespace jet::table {

ListedCursor::ListedCursor(const pages::Pager& pager,
                           std::shared_ptr<const format::TableDefinition> table,
                           std::vector<PageNumber> pages, Direction direction)
    : SlotCursor(pager, std::move(table)), direction_(direction), pages_(std::move(pages))
{
    if (direction_ == Direction::Backward) std::reverse(pages_.begin(), pages_.end());
}

bool ListedCursor::Next()
{
    if (page_ && pager_->ChangeCount() != changeCount_) Look();
    while (true) {
        if (NextSlot()) return true;
        if (!NextPage()) return false;
    }
}

// Slots keep their numbers; a page can come to have more of them, hardly fewer.
bool ListedCursor::NextSlot()
{
    while (view_ && walked_ < slots_) {
        const std::uint16_t passed = walked_++;
        const bool forward = direction_ == Direction::Forward;
        const auto slot = static_cast<std::uint16_t>(forward ? passed : slots_ - 1 - passed);
        if (slot < view_->SlotCount() && Take(*view_, slot)) return true;
    }
    return false;
}

bool ListedCursor::NextPage()
{
    if (next_ >= pages_.size()) return false;
    id_.page = pages_[next_++];
    walked_ = 0;
    Look();
    slots_ = view_ ? view_->SlotCount() : std::uint16_t{0};
    return true;
}

void ListedCursor::Look()
{
    changeCount_ = pager_->ChangeCount();
    view_.reset();
    if (Raw(id_.page) >= pager_->PageCount()) return;
    page_ = pager_->Read(id_.page);
    if (BelongsTo(*page_, table_->page)) view_.emplace(page_->Bytes());
}

}  // namespace jet::table
