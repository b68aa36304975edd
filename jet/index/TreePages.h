// SPDX-License-Identifier: Apache-2.0
// TreePages: the pages of one index, read, written, taken and given back.
#pragma once

#include "jet/format/IndexPage.h"
#include "jet/pages/UsageMap.h"

namespace jet::index {

using format::PageNumber;
using format::RowId;

// Which index: its table's definition page, its root and the map of its pages.
struct TreePlace {
    PageNumber table = PageNumber::None;
    PageNumber root = PageNumber::None;
    RowId usageMap;
};

// A page of an index, kept alive beside its view.
class LoadedPage {
public:
    LoadedPage(const pages::Pager& pager, PageNumber number)
        : page_(pager.Read(number)),
          view_(page_.Bytes(), format::IndexPageLayoutOf(pager.Version()))
    {
    }
    const format::IndexPageView* operator->() const { return &view_; }
    const format::IndexPageView& operator*() const { return view_; }

private:
    pages::Page page_;
    format::IndexPageView view_;
};

// Writing access within one write set. Requires: all arguments outlive it.
class TreePages {
public:
    TreePages(pages::Pager& pager, pages::WriteSet& changes, const TreePlace& place)
        : pager_(pager), changes_(changes), place_(place),
          layout_(format::IndexPageLayoutOf(pager.Version()))
    {
    }

    [[nodiscard]] const format::IndexPageLayout& Layout() const { return layout_; }
    [[nodiscard]] LoadedPage Load(PageNumber page) const { return {pager_, page}; }
    [[nodiscard]] format::IndexPageContent Content(PageNumber page) const
    {
        return format::IndexPageContent::Of(*Load(page));
    }
    void Store(PageNumber page, const format::IndexPageContent& content)
    {
        format::WriteIndexPage(changes_.Change(page), content, layout_);
    }

    // One entry of a page as loaded more or less, where that needs no new page image.
    bool InsertInPlace(PageNumber page, const LoadedPage& loaded, std::size_t at,
                       format::Span entry)
    {
        return format::InsertInPlace(changes_.Change(page), *loaded, at, entry, layout_);
    }
    bool EraseInPlace(PageNumber page, const LoadedPage& loaded, std::size_t at)
    {
        return format::EraseInPlace(changes_.Change(page), *loaded, at, layout_);
    }

    // A new page, in the map of the index.
    [[nodiscard]] PageNumber Take();
    // Gives a page back. Requires: nothing refers to it any more.
    void Return(PageNumber page);

    // Makes two pages of one level neighbours; either may be None.
    void Link(PageNumber left, PageNumber right);
    // Takes a page out of the row of its level.
    void Unlink(const format::IndexPageContent& page) { Link(page.previous, page.next); }

private:
    pages::Pager& pager_;
    pages::WriteSet& changes_;
    const TreePlace& place_;
    const format::IndexPageLayout& layout_;
};

}  // namespace jet::index
