// SPDX-License-Identifier: Apache-2.0
// IndexPage: a page of an index, read in place or taken apart and written anew.
#pragma once

#include "jet/format/FileVersion.h"
#include "jet/format/IndexEntries.h"

#include <cstdint>
#include <vector>

namespace jet::format {

// The first byte of an index page.
inline constexpr std::uint8_t kIndexNode = 3;
inline constexpr std::uint8_t kIndexLeaf = 4;

// Where an index page keeps its parts.                       docs/format/index-page.md
//
//   part         width   meaning
//   (kind)       1       at 0: 3 node, 4 leaf; at 1: always 1
//   freeBytes    2       bytes behind the last entry
//   owner        4       page of the table definition
//   previous     4       page before it on its level, 0 none
//   next         4       page behind it on its level, 0 none
//   tail         4       node: the last child; leaf: 0
//   prefix       1 or 2  bytes of the first entry that all others leave out
//   level        1       0 leaf, 1 node above leaves ...
//   bitmap       up to   bit n: an entry ends at byte n of the area
//   area         end     the entries
struct IndexPageLayout {
    std::size_t pageSize, freeBytes, owner, previous, next, tail, prefix, prefixWidth, level,
        bitmap, area;

    // Bytes for entries. One of them stays free, as on every page of the original engine.
    [[nodiscard]] constexpr std::size_t Room() const { return pageSize - area - 1; }
    // The longest entry: a node must hold three.
    [[nodiscard]] constexpr std::size_t LongestEntry() const { return (pageSize - area) / 3 - 5; }
};
inline constexpr IndexPageLayout kIndexPageJet3{.pageSize = 2048,
                                                .freeBytes = 2,
                                                .owner = 4,
                                                .previous = 8,
                                                .next = 12,
                                                .tail = 16,
                                                .prefix = 20,
                                                .prefixWidth = 1,
                                                .level = 21,
                                                .bitmap = 22,
                                                .area = 248};
inline constexpr IndexPageLayout kIndexPageJet4{.pageSize = 4096,
                                                .freeBytes = 2,
                                                .owner = 4,
                                                .previous = 12,
                                                .next = 16,
                                                .tail = 20,
                                                .prefix = 24,
                                                .prefixWidth = 2,
                                                .level = 26,
                                                .bitmap = 27,
                                                .area = 480};

[[nodiscard]] const IndexPageLayout& IndexPageLayoutOf(const FileVersion& version);

// A view. Requires: `page` is one whole page and outlives the view.
// Errors: 3343 when the page is no index page or contradicts itself.
class IndexPageView {
public:
    IndexPageView(Span page, const IndexPageLayout& layout);

    [[nodiscard]] bool IsLeaf() const { return ReadU8(page_, 0) == kIndexLeaf; }
    [[nodiscard]] std::uint8_t Level() const { return ReadU8(page_, layout_->level); }
    [[nodiscard]] std::uint16_t FreeBytes() const { return ReadU16(page_, layout_->freeBytes); }
    [[nodiscard]] PageNumber Owner() const { return Link(layout_->owner); }
    [[nodiscard]] PageNumber Previous() const { return Link(layout_->previous); }
    [[nodiscard]] PageNumber Next() const { return Link(layout_->next); }
    [[nodiscard]] PageNumber Tail() const { return Link(layout_->tail); }
    [[nodiscard]] std::size_t PrefixLength() const { return prefix_; }
    // Bytes of the entry area in use.
    [[nodiscard]] std::size_t UsedBytes() const { return ends_.empty() ? 0 : ends_.back(); }

    [[nodiscard]] std::size_t Count() const { return ends_.size(); }
    // Where an entry's stored bytes begin in the entry area; of Count() where the next would.
    [[nodiscard]] std::size_t StartOf(std::size_t at) const { return at == 0 ? 0 : ends_[at - 1]; }
    // The whole entry, prefix included; of a node page with its child page.
    // Rule: valid until the next call on this view.
    [[nodiscard]] Span Entry(std::size_t at) const;
    // The child at an entry; at Count() the tail. Requires: a node page.
    [[nodiscard]] PageNumber Child(std::size_t at) const;
    // The first entry that is not less than `entry` (one without child page); Count() when none is.
    [[nodiscard]] std::size_t LowerBound(Span entry) const;

private:
    [[nodiscard]] PageNumber Link(std::size_t offset) const
    {
        return PageNumber{ReadU32(page_, offset)};
    }
    [[nodiscard]] Span Stored(std::size_t at) const;
    void ReadBitmap();
    void CheckEntries() const;

    Span page_;
    const IndexPageLayout* layout_;
    std::size_t prefix_ = 0;
    std::vector<std::uint16_t> ends_;
    mutable std::vector<std::byte> whole_;  // the prefix, behind it the entry asked for last
};

// What an index page says, taken off the page.
struct IndexPageContent {
    std::uint8_t kind = kIndexLeaf;
    std::uint8_t level = 0;
    PageNumber owner = PageNumber::None;
    PageNumber previous = PageNumber::None, next = PageNumber::None, tail = PageNumber::None;
    IndexEntries entries;

    [[nodiscard]] static IndexPageContent Of(const IndexPageView& view);

    [[nodiscard]] bool IsLeaf() const { return kind == kIndexLeaf; }
    // The child at an entry; at entries.Count() the tail.
    [[nodiscard]] PageNumber Child(std::size_t at) const;
    void SetChild(std::size_t at, PageNumber child);
};

// Whether entries can stand on one page. Rule: only leaves leave out a common prefix.
[[nodiscard]] bool Fits(const IndexEntries& entries, bool leaf, const IndexPageLayout& layout);

// Requires: the entries fit; `page` is one whole page.
void WriteIndexPage(MutableSpan page, const IndexPageContent& content,
                    const IndexPageLayout& layout);
// One entry more or less on a page that keeps its prefix. Both answer false, and change nothing,
// when the page has to be written anew: no room, an entry without the prefix, or the first entry of
// a page with a prefix.
// Requires: `view` views `page` as it is; for EraseInPlace, `at` is below Count().
bool InsertInPlace(MutableSpan page, const IndexPageView& view, std::size_t at, Span entry,
                   const IndexPageLayout& layout);
bool EraseInPlace(MutableSpan page, const IndexPageView& view, std::size_t at,
                  const IndexPageLayout& layout);
// The links alone.
void WritePrevious(MutableSpan page, PageNumber previous, const IndexPageLayout& layout);
void WriteNext(MutableSpan page, PageNumber next, const IndexPageLayout& layout);

}  // namespace jet::format
