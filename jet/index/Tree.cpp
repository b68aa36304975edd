// SPDX-License-Identifier: Apache-2.0
#include "jet/index/Tree.h"

#include "base/NumberedError.h"
#include "jet/index/Split.h"

#include <algorithm>

namespace jet::index {

namespace {

using format::IndexPageContent;
using format::Span;

// No tree of a file of 2 GB is deeper, even with three children a node.
constexpr std::size_t kDeepest = 24;

bool SameKey(Span left, Span right)
{
    return format::SameBytes(format::KeyPart(left), format::KeyPart(right));
}

bool Holds(const format::IndexPageView& leaf, std::size_t at, Span entry)
{
    return at < leaf.Count() && format::CompareEntries(leaf.Entry(at), entry) == 0;
}

}  // namespace

TreePath FindLeaf(const pages::Pager& pager, PageNumber root, Span entry)
{
    TreePath path;
    path.leaf = root;
    while (path.steps.size() < kDeepest) {
        const LoadedPage page(pager, path.leaf);
        if (page->IsLeaf()) return path;
        const std::size_t slot = page->LowerBound(entry);
        path.steps.push_back({path.leaf, slot});
        path.leaf = page->Child(slot);
    }
    throw base::NumberedError(3343).At("index without bottom");
}

bool Tree::Insert(Span entry)
{
    TreePath path = FindLeaf(pager_, root_, entry);
    const LoadedPage leaf = pages_.Load(path.leaf);
    const std::size_t at = leaf->LowerBound(entry);
    if (Holds(*leaf, at, entry)) throw base::NumberedError(3049).At("index entry present already");
    const bool isNew = !HasNeighbourKey(*leaf, at, entry);
    if (pages_.InsertInPlace(path.leaf, leaf, at, entry)) return isNew;
    Content content = Content::Of(*leaf);
    content.entries.Insert(at, entry);
    StoreOrSplit(std::move(path.steps), path.leaf, std::move(content), at);
    return isNew;
}

// Whether the entry before the place `at`, or the one standing there, has the key of `entry`.
bool Tree::HasNeighbourKey(const format::IndexPageView& leaf, std::size_t at, Span entry) const
{
    if (at > 0 && SameKey(leaf.Entry(at - 1), entry)) return true;
    if (at < leaf.Count() && SameKey(leaf.Entry(at), entry)) return true;
    if (at == 0 && leaf.Previous() != PageNumber::None) {
        const LoadedPage before = pages_.Load(leaf.Previous());
        if (before->Count() > 0 && SameKey(before->Entry(before->Count() - 1), entry)) return true;
    }
    if (at < leaf.Count() || leaf.Next() == PageNumber::None) return false;
    const LoadedPage behind = pages_.Load(leaf.Next());
    return behind->Count() > 0 && SameKey(behind->Entry(0), entry);
}

// Writes a page whose entry at `changed` is new; a page that ran full becomes several, and their
// separators go to the parent, which may run full in turn.
void Tree::StoreOrSplit(std::vector<TreeStep> path, PageNumber page, Content content,
                        std::size_t changed)
{
    while (!format::Fits(content.entries, content.IsLeaf(), pages_.Layout())) {
        if (path.empty()) GrowRoot(path, page, content);
        const TreeStep parent = path.back();
        path.pop_back();
        Content above = pages_.Content(parent.page);
        SplitUnder(above, parent.slot, page, content, changed);
        page = parent.page;
        content = std::move(above);
        changed = parent.slot;
    }
    pages_.Store(page, content);
}

// The root's content moves to a new page below it; the root keeps its number.
void Tree::GrowRoot(std::vector<TreeStep>& path, PageNumber& page, const Content& content)
{
    Content root;
    root.kind = format::kIndexNode;
    // Other writers leave the level of a node 0.
    const int level = content.IsLeaf() ? 0 : std::max<int>(content.level, 1);
    root.level = static_cast<std::uint8_t>(level + 1);
    root.owner = content.owner;
    root.tail = pages_.Take();
    pages_.Store(root_, root);
    path.push_back({root_, 0});
    page = root.tail;
}

// Cuts `content` of `page` into pieces, stores them and enters them into the parent's content.
void Tree::SplitUnder(Content& parent, std::size_t slot, PageNumber page, const Content& content,
                      std::size_t changed)
{
    const bool leaf = content.IsLeaf();
    const bool endsIndex =
        content.next == PageNumber::None && changed + 1 == content.entries.Count();
    std::vector<Piece> pieces = leaf ? SplitLeaf(content, {changed, endsIndex}, pages_.Layout())
                                     : SplitNode(content, pages_.Layout());
    std::vector<PageNumber> numbers = {page};
    while (numbers.size() < pieces.size())
        numbers.push_back(pages_.Take());

    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Content part;
        part.kind = content.kind;
        part.level = content.level;
        part.owner = content.owner;
        part.previous = i == 0 ? content.previous : numbers[i - 1];
        part.next = i + 1 == pieces.size() ? content.next : numbers[i + 1];
        part.tail = pieces[i].tail;
        part.entries = std::move(pieces[i].entries);
        pages_.Store(numbers[i], part);
        if (!leaf && i > 0) PartGrandchildren(numbers[i - 1], numbers[i]);
    }
    if (content.next != PageNumber::None) pages_.Link(numbers.back(), content.next);

    parent.SetChild(slot, numbers.back());
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i)
        parent.entries.Insert(slot + i, format::MakeNodeEntry(pieces[i].separator, numbers[i]));
}

// Inner pages are neighbours only below one parent: cuts the row of the children of two nodes.
void Tree::PartGrandchildren(PageNumber left, PageNumber right)
{
    const PageNumber last = pages_.Load(left)->Tail();
    const PageNumber first = pages_.Load(right)->Child(0);
    if (pages_.Load(last)->IsLeaf()) return;
    pages_.Link(last, PageNumber::None);
    pages_.Link(PageNumber::None, first);
}

// Leaves are neighbours already; inner pages become so when one parent gets both.
void Tree::JoinGrandchildren(PageNumber left, PageNumber right)
{
    if (!pages_.Load(left)->IsLeaf()) pages_.Link(left, right);
}

void Tree::Erase(Span entry)
{
    TreePath path = FindLeaf(pager_, root_, entry);
    const LoadedPage leaf = pages_.Load(path.leaf);
    const std::size_t at = leaf->LowerBound(entry);
    if (!Holds(*leaf, at, entry)) throw base::NumberedError(3049).At("index entry missing");
    if (leaf->Count() > 1 && pages_.EraseInPlace(path.leaf, leaf, at)) return;
    Content content = Content::Of(*leaf);
    content.entries.Erase(at);
    if (!content.entries.Empty() || path.steps.empty()) return pages_.Store(path.leaf, content);
    pages_.Unlink(content);
    pages_.Return(path.leaf);
    DropChild(std::move(path.steps));
}

// The child at the path's last step is gone. A node left with its tail alone gives that to a
// neighbour and goes too.
void Tree::DropChild(std::vector<TreeStep> path)
{
    Content node = pages_.Content(path.back().page);
    std::size_t slot = path.back().slot;
    if (slot == node.entries.Count()) {
        if (node.entries.Empty()) throw base::NumberedError(3343).At("index node without entries");
        --slot;
        node.tail = node.Child(slot);
    }
    node.entries.Erase(slot);
    while (node.entries.Empty()) {
        const PageNumber page = path.back().page;
        path.pop_back();
        if (path.empty()) return CollapseRoot(node);
        GiveChildToSibling(path, page, node);
        node = pages_.Content(path.back().page);
        if (!node.entries.Empty()) return;
    }
    pages_.Store(path.back().page, node);
}

// The only child's content becomes the root's.
void Tree::CollapseRoot(const Content& root)
{
    const PageNumber only = root.tail;
    Content content = pages_.Content(only);
    content.previous = PageNumber::None;
    content.next = PageNumber::None;
    pages_.Store(root_, content);
    pages_.Return(only);
}

// `node` of `page` has one child and no entry: the sibling beside it below the path's last step
// takes the child.
void Tree::GiveChildToSibling(const std::vector<TreeStep>& path, PageNumber page,
                              const Content& node)
{
    std::vector<TreeStep> above = path;
    TreeStep& step = above.back();
    Content parent = pages_.Content(step.page);
    if (parent.entries.Empty()) throw base::NumberedError(3343).At("index node without entries");
    const bool fromLeft = step.slot > 0;
    const std::size_t separatorAt = fromLeft ? step.slot - 1 : 0;
    const PageNumber sibling = parent.Child(fromLeft ? separatorAt : 1);
    const Span kept = format::SeparatorPart(parent.entries[separatorAt]);
    Content taker = pages_.Content(sibling);
    std::size_t changed = 0;
    if (fromLeft) {
        changed = taker.entries.Count();
        taker.entries.Append(format::MakeNodeEntry(kept, taker.tail));
        JoinGrandchildren(taker.tail, node.tail);
        taker.tail = node.tail;
    } else {
        JoinGrandchildren(node.tail, taker.Child(0));
        taker.entries.Insert(0, format::MakeNodeEntry(kept, node.tail));
    }
    pages_.Unlink(node);
    // Unlinking changed the sibling's page, not what was read of it.
    if (taker.next == page) taker.next = node.next;
    if (taker.previous == page) taker.previous = node.previous;
    pages_.Return(page);

    parent.entries.Erase(separatorAt);
    parent.SetChild(separatorAt, sibling);
    pages_.Store(step.page, parent);
    step.slot = separatorAt;
    StoreOrSplit(std::move(above), sibling, std::move(taker), changed);
}

}  // namespace jet::index
