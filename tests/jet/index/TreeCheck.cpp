// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/index/TreeCheck.h"

#include "jet/format/IndexPage.h"
#include "jet/pages/UsageMap.h"

#include <algorithm>
#include <map>
#include <optional>

namespace jet {

namespace {

using format::IndexPageContent;
using format::PageNumber;
using format::Span;
using Entry = std::vector<std::byte>;

class Walker {
public:
    Walker(pages::Pager& pager, PageNumber table) : pager_(pager), table_(table) {}

    void Visit(PageNumber number, int expectedLevel, bool root);
    void CheckLeafRow();
    void CheckMap(const format::RowId& map);

    TreeReport report;

private:
    void Fault(PageNumber page, const std::string& what)
    {
        report.faults.push_back("page " + std::to_string(Raw(page)) + ": " + what);
    }
    void LevelFault(PageNumber page)
    {
        report.levelFaults.push_back("page " + std::to_string(Raw(page)));
    }
    void CheckHeader(PageNumber number, const format::IndexPageView& view, bool root);
    void CheckOrder(PageNumber number, const IndexPageContent& content);
    void VisitChildren(PageNumber number, const IndexPageContent& content);
    void CheckSiblings(const std::vector<PageNumber>& children);

    pages::Pager& pager_;
    PageNumber table_;
    std::vector<PageNumber> all_, leaves_;
    std::optional<Entry> lowest_, highest_;  // what the separators above allow
};

Entry Copy(Span bytes)
{
    return {bytes.begin(), bytes.end()};
}

void Walker::CheckHeader(PageNumber number, const format::IndexPageView& view, bool root)
{
    const auto& layout = format::IndexPageLayoutOf(pager_.Version());
    if (view.Owner() != table_) Fault(number, "owned by another table");
    if (view.FreeBytes() != layout.pageSize - layout.area - view.UsedBytes())
        Fault(number, "free bytes are wrong");
    if (view.FreeBytes() == 0) Fault(number, "no free byte");
    if (view.Count() == 0 && !root) Fault(number, "empty");
    if (view.IsLeaf() != (view.Level() == 0)) LevelFault(number);
    if (view.IsLeaf() && view.Tail() != PageNumber::None) Fault(number, "leaf with a tail");
    if (!view.IsLeaf() && view.Tail() == PageNumber::None) Fault(number, "node without tail");
    if (!view.IsLeaf() && view.Count() == 0) Fault(number, "node without entries");
    if (root && (view.Previous() != PageNumber::None || view.Next() != PageNumber::None))
        Fault(number, "root with neighbours");
}

void Walker::CheckOrder(PageNumber number, const IndexPageContent& content)
{
    for (std::size_t i = 0; i < content.entries.Count(); ++i) {
        const Span whole = content.entries[i];
        const Span entry = content.IsLeaf() ? whole : format::SeparatorPart(whole);
        if (lowest_ && format::CompareEntries(*lowest_, entry) >= 0)
            Fault(number, "entry not behind the one before");
        if (highest_ && format::CompareEntries(entry, *highest_) > 0)
            Fault(number, "entry behind its separator");
        if (content.IsLeaf()) {
            lowest_ = Copy(entry);
            report.entries.push_back(Copy(entry));
        }
    }
}

void Walker::Visit(PageNumber number, int expectedLevel, bool root)
{
    const pages::Page page = pager_.Read(number);
    const format::IndexPageView view(page.Bytes(), format::IndexPageLayoutOf(pager_.Version()));
    all_.push_back(number);
    ++report.pages;
    CheckHeader(number, view, root);
    if (expectedLevel >= 0 && view.Level() != expectedLevel) LevelFault(number);
    if (root) report.levels = view.Level() + 1U;
    const IndexPageContent content = IndexPageContent::Of(view);
    if (!content.IsLeaf()) return VisitChildren(number, content);
    leaves_.push_back(number);
    CheckOrder(number, content);
}

void Walker::VisitChildren(PageNumber number, const IndexPageContent& content)
{
    const std::optional<Entry> above = highest_;
    std::vector<PageNumber> children;
    for (std::size_t i = 0; i <= content.entries.Count(); ++i) {
        highest_ = above;
        if (i < content.entries.Count()) {
            highest_ = Copy(format::SeparatorPart(content.entries[i]));
            if (above && format::CompareEntries(*highest_, *above) > 0)
                Fault(number, "separator behind the one above");
        }
        children.push_back(content.Child(i));
        Visit(content.Child(i), content.level - 1, false);
        lowest_ = i < content.entries.Count() ? highest_ : lowest_;
    }
    highest_ = above;
    if (content.level > 1) CheckSiblings(children);
}

void Walker::CheckSiblings(const std::vector<PageNumber>& children)
{
    for (std::size_t i = 0; i < children.size(); ++i) {
        const pages::Page page = pager_.Read(children[i]);
        const format::IndexPageView view(page.Bytes(), format::IndexPageLayoutOf(pager_.Version()));
        if (view.Previous() != (i == 0 ? PageNumber::None : children[i - 1]))
            Fault(children[i], "previous sibling is wrong");
        if (view.Next() != (i + 1 == children.size() ? PageNumber::None : children[i + 1]))
            Fault(children[i], "next sibling is wrong");
    }
}

void Walker::CheckLeafRow()
{
    CheckSiblings(leaves_);
}

void Walker::CheckMap(const format::RowId& map)
{
    std::sort(all_.begin(), all_.end());
    if (pages::UsageMap(pager_, map).Pages() != all_)
        report.faults.emplace_back("the map of pages is not the set of the tree's pages");
}

}  // namespace

TreeReport CheckTree(pages::Pager& pager, PageNumber table, const format::IndexDefinition& index)
{
    Walker walker(pager, table);
    walker.Visit(index.root, -1, true);
    walker.CheckLeafRow();
    walker.CheckMap(index.usageMap);
    return std::move(walker.report);
}

}  // namespace jet
