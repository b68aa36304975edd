// SPDX-License-Identifier: Apache-2.0
#include "jet/check/IndexTree.h"

#include "base/NumberedError.h"

namespace jet::check {

using format::IndexPageView;
using format::Span;

namespace {

// Three entries on every node page already reach all rows of the largest file.
constexpr std::size_t kDeepest = 24;

}  // namespace

IndexTree::IndexTree(Inspection& inspection, const format::TableDefinition& table,
                     const format::IndexDefinition& index, std::string name, EachEntry each)
    : inspection_(inspection), table_(table), index_(index),
      layout_(format::IndexPageLayoutOf(inspection.Pager().Version())), name_(std::move(name)),
      each_(std::move(each))
{
}

void IndexTree::Walk()
{
    WalkPage(index_.root, {.from = table_.page, .depth = 0, .levelAbove = 0});
    if (whole_) CheckLinks();
}

void IndexTree::WalkPage(PageNumber number, const Place& place)
{
    const auto page = inspection_.Read(number, place.from, 0, name_);
    if (!page || !inspection_.Claim(number, PageUse::Index, table_.page)) {
        whole_ = false;
        return;
    }
    pages_.push_back(number);
    try {
        const IndexPageView view(page->Bytes(), layout_);
        if (!CheckLevel(number, view, place)) return;
        CheckHead(number, view);
        view.IsLeaf() ? WalkLeaf(number, view) : WalkNode(number, view, place);
    } catch (const base::NumberedError& error) {
        if (error.Number() == 3043) throw;
        Broken(DefectKind::IndexPage, number, error.Detail());
    }
}

// Levels fall by one from page to page down to 0 for leaves. Some writers leave them out.
bool IndexTree::CheckLevel(PageNumber number, const IndexPageView& view, const Place& place)
{
    const std::uint8_t level = view.Level();
    const bool falls = place.levelAbove == 0 || level + 1 == place.levelAbove;
    const bool missing = !view.IsLeaf() && level == 0;
    const bool fits = view.IsLeaf() ? level == 0 && falls : falls || missing;
    if (!fits || place.depth > kDeepest) {
        Broken(DefectKind::IndexLevel, number,
               "is of level " + std::to_string(level) + " at depth " + std::to_string(place.depth));
        return false;
    }
    if (missing) Found(DefectKind::IndexLevelMissing, number, 0, "does not tell its level");
    return true;
}

void IndexTree::CheckHead(PageNumber number, const IndexPageView& view)
{
    if (view.Owner() != table_.page) {
        Found(DefectKind::IndexOwner, number, layout_.owner,
              "belongs to the table at " + PageText(view.Owner()));
    }
    const std::size_t free = layout_.pageSize - layout_.area - view.UsedBytes();
    if (view.FreeBytes() != free) {
        Found(DefectKind::IndexFreeBytes, number, layout_.freeBytes,
              "says " + std::to_string(view.FreeBytes()) + " free bytes, has " +
                  std::to_string(free));
    }
    if (view.Count() == 0 && (number != index_.root || !view.IsLeaf()))
        Found(DefectKind::IndexEmptyPage, number, layout_.bitmap, "has no entries");
    if (view.IsLeaf() && view.Tail() != PageNumber::None)
        Found(DefectKind::IndexLinks, number, layout_.tail, "is a leaf with a child");
}

void IndexTree::WalkLeaf(PageNumber number, const IndexPageView& view)
{
    leaves_.push_back({number, view.Previous(), view.Next(), PageNumber::None});
    for (std::size_t at = 0; at < view.Count(); ++at)
        TakeEntry(view.Entry(at), number);
}

void IndexTree::WalkNode(PageNumber number, const IndexPageView& view, const Place& place)
{
    if (nodes_.size() <= place.depth) nodes_.resize(place.depth + 1);
    nodes_[place.depth].push_back({number, view.Previous(), view.Next(), place.from});
    const Place below{.from = number, .depth = place.depth + 1, .levelAbove = view.Level()};
    for (std::size_t at = 0; at < view.Count(); ++at) {
        const Span entry = format::SeparatorPart(view.Entry(at));
        const std::vector<std::byte> separator(entry.begin(), entry.end());
        WalkPage(view.Child(at), below);
        if (!last_.empty() && format::CompareEntries(last_, separator) > 0)
            Found(DefectKind::IndexSeparator, number, layout_.area,
                  "separator " + std::to_string(at) + " is less than what lies before it");
        separator_ = separator;
    }
    WalkPage(view.Tail(), below);
}

void IndexTree::TakeEntry(Span entry, PageNumber page)
{
    ++inspection_.Report().indexEntries;
    const bool first = last_.empty();
    const bool repeats =
        !first && format::SameBytes(format::KeyPart(last_), format::KeyPart(entry));
    if (!first && format::CompareEntries(last_, entry) >= 0)
        Found(DefectKind::IndexOrder, page, layout_.area, "has entries out of order");
    if (!separator_.empty() && format::CompareEntries(separator_, entry) >= 0) {
        Found(DefectKind::IndexSeparator, page, layout_.area,
              "has an entry that belongs before its separator");
        separator_.clear();
    }
    last_.assign(entry.begin(), entry.end());
    each_(entry, repeats);
}

void IndexTree::ForEachEntry(const std::function<void(Span entry, PageNumber page)>& visit) const
{
    for (const Linked& leaf : leaves_) {
        const pages::Page page = inspection_.Pager().Read(leaf.page);
        const IndexPageView view(page.Bytes(), layout_);
        for (std::size_t at = 0; at < view.Count(); ++at)
            visit(view.Entry(at), leaf.page);
    }
}

void IndexTree::CheckLinks()
{
    for (const std::vector<Linked>& level : nodes_)
        CheckNodeLinks(level);
    for (std::size_t i = 0; i < leaves_.size(); ++i) {
        const PageNumber before = i == 0 ? PageNumber::None : leaves_[i - 1].page;
        const PageNumber after = i + 1 == leaves_.size() ? PageNumber::None : leaves_[i + 1].page;
        if (leaves_[i].previous != before || leaves_[i].next != after)
            FoundLinks(leaves_[i], before, after);
    }
}

// Rule: nodes are linked to the other children of their parent. Whether a link leads further, to
//       the child of the next parent, is not known; either is taken for sound.
void IndexTree::CheckNodeLinks(const std::vector<Linked>& level)
{
    const auto fits = [](PageNumber link, const Linked& node, const Linked* neighbour) {
        if (neighbour == nullptr) return link == PageNumber::None;
        return link == neighbour->page ||
               (link == PageNumber::None && neighbour->above != node.above);
    };
    for (std::size_t i = 0; i < level.size(); ++i) {
        const Linked* const before = i == 0 ? nullptr : &level[i - 1];
        const Linked* const after = i + 1 == level.size() ? nullptr : &level[i + 1];
        if (fits(level[i].previous, level[i], before) && fits(level[i].next, level[i], after))
            continue;
        FoundLinks(level[i], before != nullptr ? before->page : PageNumber::None,
                   after != nullptr ? after->page : PageNumber::None);
    }
}

void IndexTree::FoundLinks(const Linked& page, PageNumber before, PageNumber after)
{
    Found(DefectKind::IndexLinks, page.page, layout_.previous,
          "is linked to " + PageText(page.previous) + " and " + PageText(page.next) +
              ", its neighbours are " + PageText(before) + " and " + PageText(after));
}

void IndexTree::Found(DefectKind kind, PageNumber page, std::size_t offset, const std::string& what)
{
    inspection_.Found(kind, page, offset, name_ + ": " + what);
}

void IndexTree::Broken(DefectKind kind, PageNumber page, const std::string& what)
{
    whole_ = false;
    Found(kind, page, 0, what);
}

}  // namespace jet::check
