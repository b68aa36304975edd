// SPDX-License-Identifier: Apache-2.0
#include "jet/format/IndexPage.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>

namespace jet::format {

namespace {

constexpr std::size_t kLongestPrefix = 255;

[[noreturn]] void Damaged(const char* what)
{
    throw base::NumberedError(3343).At(std::string("index page: ") + what);
}

std::size_t CommonPrefix(Span left, Span right)
{
    const std::size_t common = std::min(left.size(), right.size());
    if (std::memcmp(left.data(), right.data(), common) == 0) return common;
    std::size_t length = 0;
    while (left[length] == right[length])
        ++length;
    return length;
}

// The prefix that a page with these entries leaves out.
// Rule: entries that fit whole stay whole; no entry is left out as a whole. Each entry is asked,
// for on a damaged page first and last do not speak for those between them.
std::size_t PrefixFor(const IndexEntries& entries, bool leaf, const IndexPageLayout& layout)
{
    if (!leaf || entries.Count() < 2 || entries.Size() <= layout.Room()) return 0;
    const Span first = entries[0].first(std::min(entries[0].size() - 1, kLongestPrefix));
    std::size_t length = CommonPrefix(first, entries[entries.Count() - 1]);
    for (std::size_t i = 1; i < entries.Count(); ++i)
        length = CommonPrefix(first.first(std::min(length, entries[i].size() - 1)), entries[i]);
    return length;
}

std::size_t StoredSize(const IndexEntries& entries, std::size_t prefix)
{
    return entries.Empty() ? 0 : entries.Size() - prefix * (entries.Count() - 1);
}

void WriteFreeBytes(MutableSpan page, const IndexPageLayout& layout, std::size_t used)
{
    WriteU16(page, layout.freeBytes,
             static_cast<std::uint16_t>(layout.pageSize - layout.area - used));
}

void MarkEnd(MutableSpan page, const IndexPageLayout& layout, std::size_t end)
{
    page[layout.bitmap + end / 8] |= static_cast<std::byte>(1U << (end % 8));
}

void ClearMark(MutableSpan page, const IndexPageLayout& layout, std::size_t end)
{
    page[layout.bitmap + end / 8] &= ~static_cast<std::byte>(1U << (end % 8));
}

void MoveMark(MutableSpan page, const IndexPageLayout& layout, std::size_t from, std::size_t to)
{
    ClearMark(page, layout, from);
    MarkEnd(page, layout, to);
}

}  // namespace

const IndexPageLayout& IndexPageLayoutOf(const FileVersion& version)
{
    return *version.indexPage;
}

IndexPageView::IndexPageView(Span page, const IndexPageLayout& layout)
    : page_(page), layout_(&layout)
{
    RequireInside(page.size(), 0, layout.pageSize);
    const std::uint8_t kind = ReadU8(page, 0);
    if (kind != kIndexNode && kind != kIndexLeaf) Damaged("of another kind");
    prefix_ = layout.prefixWidth == 1 ? ReadU8(page, layout.prefix) : ReadU16(page, layout.prefix);
    ReadBitmap();
    CheckEntries();
    if (Count() == 0) return;
    const Span first = Stored(0);
    whole_.assign(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(prefix_));
}

void IndexPageView::ReadBitmap()
{
    const std::size_t bytes = layout_->area - layout_->bitmap;
    std::array<std::uint64_t, 64> words{};
    assert(bytes <= sizeof words);
    std::memcpy(words.data(), page_.data() + layout_->bitmap, bytes);
    std::size_t count = 0;
    for (const std::uint64_t word : words)
        count += static_cast<std::size_t>(std::popcount(word));
    ends_.resize(count);
    std::uint16_t* next = ends_.data();
    unsigned first = 0;
    for (std::uint64_t word : words) {
        for (; word != 0; word &= word - 1)
            *next++ =
                static_cast<std::uint16_t>(first + static_cast<unsigned>(std::countr_zero(word)));
        first += 64;
    }
    if (UsedBytes() > layout_->pageSize - layout_->area) Damaged("entries beyond its end");
}

void IndexPageView::CheckEntries() const
{
    if (ends_.empty()) return;
    const std::size_t shortest = kRowPlaceWidth + (IsLeaf() ? 0 : kChildWidth);
    // The first entry stands whole; it may be as long as it is.
    std::size_t narrowest = ends_.front() - prefix_;
    if (prefix_ > ends_.front()) Damaged("prefix longer than the first entry");
    std::size_t start = ends_.front();
    for (const std::uint16_t end : std::span(ends_).subspan(1)) {
        narrowest = std::min(narrowest, end - start);
        start = end;
    }
    if (narrowest + prefix_ < shortest) Damaged("entry too short");
}

Span IndexPageView::Stored(std::size_t at) const
{
    return page_.subspan(layout_->area + StartOf(at), ends_[at] - StartOf(at));
}

Span IndexPageView::Entry(std::size_t at) const
{
    const Span stored = Stored(at);
    if (at == 0 || prefix_ == 0) return stored;
    whole_.resize(prefix_);
    whole_.insert(whole_.end(), stored.begin(), stored.end());
    return whole_;
}

PageNumber IndexPageView::Child(std::size_t at) const
{
    return at == Count() ? Tail() : ChildPart(Entry(at));
}

std::size_t IndexPageView::LowerBound(Span entry) const
{
    std::size_t from = 0;
    std::size_t to = Count();
    while (from < to) {
        const std::size_t middle = (from + to) / 2;
        const Span whole = Entry(middle);
        const Span compared = IsLeaf() ? whole : SeparatorPart(whole);
        if (CompareEntries(compared, entry) < 0)
            from = middle + 1;
        else
            to = middle;
    }
    return from;
}

IndexPageContent IndexPageContent::Of(const IndexPageView& view)
{
    IndexPageContent content;
    content.kind = view.IsLeaf() ? kIndexLeaf : kIndexNode;
    content.level = view.Level();
    content.owner = view.Owner();
    content.previous = view.Previous();
    content.next = view.Next();
    content.tail = view.Tail();
    const std::size_t bytes = view.UsedBytes() + view.PrefixLength() * view.Count();
    content.entries.Reserve(view.Count() + 1, bytes + kLongestPrefix);
    for (std::size_t i = 0; i < view.Count(); ++i)
        content.entries.Append(view.Entry(i));
    return content;
}

PageNumber IndexPageContent::Child(std::size_t at) const
{
    return at == entries.Count() ? tail : ChildPart(entries[at]);
}

void IndexPageContent::SetChild(std::size_t at, PageNumber child)
{
    if (at == entries.Count())
        tail = child;
    else
        entries.SetChild(at, child);
}

bool Fits(const IndexEntries& entries, bool leaf, const IndexPageLayout& layout)
{
    return StoredSize(entries, PrefixFor(entries, leaf, layout)) <= layout.Room();
}

void WriteIndexPage(MutableSpan page, const IndexPageContent& content,
                    const IndexPageLayout& layout)
{
    const std::size_t prefix = PrefixFor(content.entries, content.IsLeaf(), layout);
    const std::size_t used = StoredSize(content.entries, prefix);
    RequireInside(layout.pageSize, layout.area, used);
    std::fill(page.begin(), page.end(), std::byte{0});
    WriteU8(page, 0, content.kind);
    WriteU8(page, 1, 1);
    WriteFreeBytes(page, layout, used);
    WriteU32(page, layout.owner, Raw(content.owner));
    WriteU32(page, layout.previous, Raw(content.previous));
    WriteU32(page, layout.next, Raw(content.next));
    WriteU32(page, layout.tail, Raw(content.tail));
    WriteU8(page, layout.prefix, static_cast<std::uint8_t>(prefix));
    WriteU8(page, layout.level, content.level);
    std::size_t end = 0;
    for (std::size_t i = 0; i < content.entries.Count(); ++i) {
        const Span entry = content.entries[i].subspan(i == 0 ? 0 : prefix);
        std::memcpy(page.data() + layout.area + end, entry.data(), entry.size());
        end += entry.size();
        MarkEnd(page, layout, end);
    }
}

bool InsertInPlace(MutableSpan page, const IndexPageView& view, std::size_t at, Span entry,
                   const IndexPageLayout& layout)
{
    const std::size_t prefix = view.PrefixLength();
    if (prefix > 0 && (at == 0 || CommonPrefix(view.Entry(0), entry) < prefix)) return false;
    if (entry.size() <= prefix) return false;
    const Span stored = entry.subspan(prefix);
    if (view.UsedBytes() + stored.size() > layout.Room()) return false;
    const std::size_t start = view.StartOf(at);
    std::byte* const place = page.data() + layout.area + start;
    std::memmove(place + stored.size(), place, view.UsedBytes() - start);
    std::memcpy(place, stored.data(), stored.size());
    // From the last mark to the first, so that no mark is set where an old one is still to go.
    for (std::size_t i = view.Count(); i > at; --i)
        MoveMark(page, layout, view.StartOf(i), view.StartOf(i) + stored.size());
    MarkEnd(page, layout, start + stored.size());
    WriteFreeBytes(page, layout, view.UsedBytes() + stored.size());
    return true;
}

bool EraseInPlace(MutableSpan page, const IndexPageView& view, std::size_t at,
                  const IndexPageLayout& layout)
{
    if (view.PrefixLength() > 0 && at == 0) return false;
    const std::size_t start = view.StartOf(at);
    const std::size_t end = view.StartOf(at + 1);
    const std::size_t width = end - start;
    std::byte* const place = page.data() + layout.area + start;
    std::memmove(place, place + width, view.UsedBytes() - end);
    ClearMark(page, layout, end);
    for (std::size_t i = at + 2; i <= view.Count(); ++i)
        MoveMark(page, layout, view.StartOf(i), view.StartOf(i) - width);
    WriteFreeBytes(page, layout, view.UsedBytes() - width);
    return true;
}

void WritePrevious(MutableSpan page, PageNumber previous, const IndexPageLayout& layout)
{
    WriteU32(page, layout.previous, Raw(previous));
}

void WriteNext(MutableSpan page, PageNumber next, const IndexPageLayout& layout)
{
    WriteU32(page, layout.next, Raw(next));
}

}  // namespace jet::format
