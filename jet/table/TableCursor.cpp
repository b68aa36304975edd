// SPDX-License-Identifier: Apache-2.0
#include "jet/table/TableCursor.h"

#include "jet/pages/UsageMap.h"

namespace jet::table {

TableCursor::TableCursor(pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table)
    : SlotCursor(pager, std::move(table)), file_(pager), walk_(pager)
{
    Begin(PageNumber::None);
}

void TableCursor::Begin(PageNumber from)
{
    changeCount_ = pager_->ChangeCount();
    walk_.Begin(pages::UsageMap(file_, table_->ownedPages).Pages(), from);
}

bool TableCursor::Next()
{
    if (pager_->ChangeCount() != changeCount_) Resume();
    while (true) {
        while (view_ && nextSlot_ < view_->SlotCount())
            if (Take(*view_, nextSlot_++)) return true;
        if (!NextPage()) return false;
    }
}

void TableCursor::ForEach(const Visit& visit)
{
    if (pager_->ChangeCount() != changeCount_) Resume();
    do {
        if (!view_) continue;
        const format::DataPage page = *view_;
        for (const std::uint16_t end = page.SlotCount(); nextSlot_ < end; ++nextSlot_)
            if (Take(page, nextSlot_)) visit(id_, *row_);
    } while (NextPage());
}

// The page walked last may have been given back; slots before the next one keep their numbers.
void TableCursor::Resume()
{
    const PageNumber page = id_.page;
    const std::uint16_t slot = nextSlot_;
    view_.reset();
    Begin(page);
    if (page != PageNumber::None && NextPage() && id_.page == page) nextSlot_ = slot;
}

bool TableCursor::NextPage()
{
    if (!walk_.Next()) return false;
    view_ = OwnedPage(walk_.Bytes(), Raw(table_->page));
    nextSlot_ = 0;
    id_.page = walk_.Number();
    return true;
}

}  // namespace jet::table
