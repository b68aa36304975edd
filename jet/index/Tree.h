// SPDX-License-Identifier: Apache-2.0
// Tree: entries of one index put in and taken out, pages split and dropped on the way.
#pragma once

#include "jet/index/TreePages.h"

#include <vector>

namespace jet::index {

// One step down the tree.
struct TreeStep {
    PageNumber page = PageNumber::None;
    std::size_t slot = 0;  // the entry followed; the number of entries stands for the tail
};

// The way from the root to the leaf where an entry belongs.
struct TreePath {
    std::vector<TreeStep> steps;
    PageNumber leaf = PageNumber::None;
};

// Requires: `entry` is a key and its row's place.
// Errors:   3343 for a page that contradicts itself, or a tree without bottom.
[[nodiscard]] TreePath FindLeaf(const pages::Pager& pager, PageNumber root, format::Span entry);

// Changes one index within one write set.
//
// Rule: the root keeps its page number; separators stay as they are when their entry goes; no page
//       but the root is ever without entries; half-empty pages are not merged.
class Tree {
public:
    Tree(TreePages& pages, const pages::Pager& pager, PageNumber root)
        : pages_(pages), pager_(pager), root_(root)
    {
    }

    // Answers whether the key of `entry` is new in the index.
    // Errors: 3049 when the entry is there already.
    bool Insert(format::Span entry);
    // Errors: 3049 when the entry is not there.
    void Erase(format::Span entry);

private:
    using Content = format::IndexPageContent;

    [[nodiscard]] bool HasNeighbourKey(const format::IndexPageView& leaf, std::size_t at,
                                       format::Span entry) const;
    void StoreOrSplit(std::vector<TreeStep> path, PageNumber page, Content content,
                      std::size_t changed);
    void GrowRoot(std::vector<TreeStep>& path, PageNumber& page, const Content& content);
    void SplitUnder(Content& parent, std::size_t slot, PageNumber page, const Content& content,
                    std::size_t changed);
    void PartGrandchildren(PageNumber left, PageNumber right);
    void JoinGrandchildren(PageNumber left, PageNumber right);
    void DropChild(std::vector<TreeStep> path);
    void CollapseRoot(const Content& root);
    void GiveChildToSibling(const std::vector<TreeStep>& path, PageNumber page,
                            const Content& node);

    TreePages& pages_;
    const pages::Pager& pager_;
    PageNumber root_;
};

}  // namespace jet::index
