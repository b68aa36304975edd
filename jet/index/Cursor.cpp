// SPDX-License-Identifier: Apache-2.0
#include "jet/index/Cursor.h"

#include "base/NumberedError.h"
#include "jet/index/Tree.h"

namespace jet::index {

bool Cursor::First()
{
    return GoToEdge(Side::First);
}

bool Cursor::Last()
{
    return GoToEdge(Side::Last);
}

bool Cursor::GoToEdge(Side side)
{
    pagesVisited_ = 0;
    PageNumber number = root_;
    while (Enter(number) && !(*page_)->IsLeaf()) {
        const format::IndexPageView& node = **page_;
        number = side == Side::First ? node.Child(0) : node.Tail();
    }
    if (side == Side::First) {
        at_ = 0;
        return (*page_)->Count() > 0 || ToNextPage();
    }
    at_ = (*page_)->Count();
    return Previous();
}

bool Cursor::Seek(format::Span entry)
{
    pagesVisited_ = 0;
    Enter(FindLeaf(*pager_, root_, entry).leaf);
    at_ = (*page_)->LowerBound(entry);
    return at_ < (*page_)->Count() || ToNextPage();
}

bool Cursor::Next()
{
    if (++at_ < (*page_)->Count()) return true;
    return ToNextPage();
}

bool Cursor::Previous()
{
    if (at_ > 0) {
        --at_;
        return true;
    }
    return ToPreviousPage();
}

// Rule: an index whose pages lead in a circle ends in an error, not in a walk for ever.
bool Cursor::Enter(PageNumber page)
{
    if (page == PageNumber::None || ++pagesVisited_ > pager_->PageCount())
        throw base::NumberedError(3343).At("index pages in a circle");
    page_.emplace(*pager_, page);
    return true;
}

bool Cursor::ToNextPage()
{
    while ((*page_)->Next() != PageNumber::None) {
        Enter((*page_)->Next());
        at_ = 0;
        if ((*page_)->Count() > 0) return true;
    }
    return false;
}

bool Cursor::ToPreviousPage()
{
    while ((*page_)->Previous() != PageNumber::None) {
        Enter((*page_)->Previous());
        at_ = (*page_)->Count();
        if (at_ > 0) {
            --at_;
            return true;
        }
    }
    return false;
}

}  // namespace jet::index
