// SPDX-License-Identifier: Apache-2.0
#include "jet/index/Split.h"

#include <algorithm>
#include <cassert>

namespace jet::index {

namespace {

using format::IndexEntries;
using format::IndexPageContent;
using format::IndexPageLayout;
using format::PageNumber;

// The number of leading entries that make up about half of the bytes of [from, to).
std::size_t Middle(const IndexEntries& entries, std::size_t from, std::size_t to)
{
    std::size_t whole = 0;
    for (std::size_t i = from; i < to; ++i)
        whole += entries[i].size();
    std::size_t left = 0;
    std::size_t at = from;
    while (at < to && 2 * left < whole)
        left += entries[at++].size();
    return at;
}

void AddLeaf(std::vector<Piece>& pieces, IndexEntries entries)
{
    const format::Span last = entries[entries.Count() - 1];
    Piece piece;
    piece.separator.assign(last.begin(), last.end());
    piece.entries = std::move(entries);
    pieces.push_back(std::move(piece));
}

bool PartFits(const IndexEntries& entries, std::size_t from, std::size_t to,
              const IndexPageLayout& layout)
{
    return format::Fits(entries.Part(from, to), true, layout);
}

// Halves [from, to) until every part fits.
void CutLeaf(std::vector<Piece>& pieces, const IndexEntries& entries, std::size_t from,
             std::size_t to, const IndexPageLayout& layout)
{
    if (from == to) return;
    IndexEntries part = entries.Part(from, to);
    if (to - from == 1 || format::Fits(part, true, layout)) return AddLeaf(pieces, std::move(part));
    const std::size_t middle = std::clamp(Middle(entries, from, to), from + 1, to - 1);
    CutLeaf(pieces, entries, from, middle, layout);
    CutLeaf(pieces, entries, middle, to, layout);
}

void CutNode(std::vector<Piece>& pieces, const IndexEntries& entries, PageNumber tail,
             const IndexPageLayout& layout)
{
    if (entries.Count() < 3 || format::Fits(entries, false, layout)) {
        pieces.push_back({entries, tail, {}});
        return;
    }
    const std::size_t count = entries.Count();
    const std::size_t half = Middle(entries, 0, count);
    const std::size_t middle = std::clamp<std::size_t>(half - 1, 1, count - 2);
    const format::Span raised = entries[middle];
    CutNode(pieces, entries.Part(0, middle), format::ChildPart(raised), layout);
    const format::Span separator = format::SeparatorPart(raised);
    pieces.back().separator.assign(separator.begin(), separator.end());
    CutNode(pieces, entries.Part(middle + 1, count), tail, layout);
}

}  // namespace

std::vector<Piece> SplitLeaf(const IndexPageContent& leaf, NewEntry entry,
                             const IndexPageLayout& layout)
{
    const IndexEntries& entries = leaf.entries;
    const std::size_t count = entries.Count();
    std::vector<std::size_t> cuts = {Middle(entries, 0, count)};
    if (entry.endsIndex) cuts = {count - 1};
    // An entry that shares little with the others robs them of their common prefix; then the page
    // cannot be halved, but what stands before it and behind it fits as it did before.
    const bool halvesFit = cuts.front() > 0 && cuts.front() < count &&
                           PartFits(entries, 0, cuts.front(), layout) &&
                           PartFits(entries, cuts.front(), count, layout);
    if (!halvesFit) cuts = {entry.at, entry.at + 1};

    std::vector<Piece> pieces;
    std::size_t from = 0;
    for (const std::size_t cut : cuts) {
        CutLeaf(pieces, entries, from, cut, layout);
        from = cut;
    }
    CutLeaf(pieces, entries, from, count, layout);
    pieces.back().separator.clear();
    return pieces;
}

std::vector<Piece> SplitNode(const IndexPageContent& node, const IndexPageLayout& layout)
{
    std::vector<Piece> pieces;
    CutNode(pieces, node.entries, node.tail, layout);
    assert(pieces.size() > 1);
    return pieces;
}

}  // namespace jet::index
