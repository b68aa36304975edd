// SPDX-License-Identifier: Apache-2.0
#include "jet/index/TreePages.h"

namespace jet::index {

PageNumber TreePages::Take()
{
    const PageNumber page = changes_.Allocate();
    pages::UsageMap(pager_, place_.usageMap).Add(changes_, page);
    return page;
}

void TreePages::Return(PageNumber page)
{
    pages::UsageMap(pager_, place_.usageMap).Remove(changes_, page);
    changes_.Free(page);
}

void TreePages::Link(PageNumber left, PageNumber right)
{
    if (left != PageNumber::None) format::WriteNext(changes_.Change(left), right, layout_);
    if (right != PageNumber::None) format::WritePrevious(changes_.Change(right), left, layout_);
}

}  // namespace jet::index
