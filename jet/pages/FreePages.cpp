// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/FreePages.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
#include "jet/pages/MapRow.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <optional>

namespace jet::pages {

namespace {

constexpr format::RowId kFreePages{PageNumber{1}, 0};

// The lowest set bit from `first` on, nothing when none is set. Every page taken asks this, so
// words at a time.
std::optional<std::size_t> LowestBit(format::Span bitmap, std::size_t first)
{
    std::size_t at = first / 8;
    if (at >= bitmap.size()) return std::nullopt;
    const unsigned begun = std::to_integer<unsigned>(bitmap[at]) & (0xFFU << (first % 8));
    if (begun != 0) return 8 * at + static_cast<std::size_t>(std::countr_zero(begun));
    ++at;
    for (std::uint64_t word = 0; bitmap.size() - at >= sizeof(word); at += sizeof(word)) {
        std::memcpy(&word, bitmap.data() + at, sizeof(word));
        if (word != 0) return 8 * at + static_cast<std::size_t>(std::countr_zero(word));
    }
    for (; at < bitmap.size(); ++at) {
        const auto byte = std::to_integer<std::uint8_t>(bitmap[at]);
        if (byte != 0) return 8 * at + static_cast<std::size_t>(std::countr_zero(byte));
    }
    return std::nullopt;
}

// The lowest page from `first` on that an existing bitmap calls free. Pages behind the bitmaps are
// free too, but the file ends before them.
std::optional<std::uint32_t> LowestFree(const Pager& pager, std::uint32_t first)
{
    const Page home = pager.Read(kFreePages.page);
    const format::Span row = MapBytes(home, kFreePages);
    if (FormOf(row) == MapForm::Inline) {
        const std::uint32_t start = format::ReadU32(row, 1);
        const auto bit = LowestBit(row.subspan(kMapHead), std::max(first, start) - start);
        if (!bit) return std::nullopt;
        return start + static_cast<std::uint32_t>(*bit);
    }
    const std::uint32_t perBitmap = PagesPerBitmap(pager.Version().pageSize);
    for (std::uint32_t i = first / perBitmap; 1 + 4 * (std::size_t{i} + 1) <= row.size(); ++i) {
        const PageNumber bitmapPage{format::ReadU32(row, 1 + std::size_t{4} * i)};
        const std::uint32_t from = std::max(first, i * perBitmap);
        if (bitmapPage == PageNumber::None) return from;
        const Page page = pager.Read(bitmapPage);
        if (const auto bit = LowestBit(BitmapOf(page), from - i * perBitmap))
            return i * perBitmap + static_cast<std::uint32_t>(*bit);
    }
    return std::nullopt;
}

// Makes sure that an inline map reaches `page`; new bits are free.
void ReachInline(WriteSet& changes, PageNumber page)
{
    const format::MutableSpan home = changes.Change(kFreePages.page);
    const format::Span row = format::RowBytes(home, kFreePages.slot);
    const std::uint32_t start = format::ReadU32(row, 1);
    if (Raw(page) < start)
        throw base::NumberedError(3343).At("map of free pages: page before its start");
    const std::size_t bits = 8 * (row.size() - kMapHead);
    const std::size_t wanted = Raw(page) - start;
    if (wanted < bits) return;
    const std::size_t longer = row.size() + 4 * ((wanted - bits) / 32 + 1);
    const std::size_t old = row.size();
    format::ResizeRow(home, kFreePages.slot, longer);
    const format::MutableSpan grown = format::RowBytes(home, kFreePages.slot);
    std::fill(grown.begin() + static_cast<std::ptrdiff_t>(old), grown.end(), std::byte{0xFF});
}

bool InlineHasRoom(const Pager& pager, PageNumber page)
{
    const Page home = pager.Read(kFreePages.page);
    const format::Span row = MapBytes(home, kFreePages);
    const std::size_t wanted = Raw(page) - std::min(Raw(page), format::ReadU32(row, 1));
    const std::size_t bits = 8 * (row.size() - kMapHead);
    return wanted < bits ||
           4 * ((wanted - bits) / 32 + 1) <= format::DataPage(home.Bytes()).FreeBytes();
}

// Bitmap pages of the free map take themselves: they are the first pages behind what the inline map
// could reach. Requires: `firstNew` is the first page behind the file.
void ConvertToReference(WriteSet& changes, std::uint32_t firstNew)
{
    const Pager& pager = changes.Of();
    const Page home = pager.Read(kFreePages.page);
    const format::Span row = MapBytes(home, kFreePages);
    const std::uint32_t start = format::ReadU32(row, 1);
    const std::vector<std::byte> bits(row.begin() + kMapHead, row.end());
    const std::uint32_t perBitmap = PagesPerBitmap(pager.Version().pageSize);
    if (firstNew >= perBitmap)
        throw base::NumberedError(3343).At("map of free pages: inline beyond its reach");

    const PageNumber bitmapPage = changes.AppendPage();
    const format::MutableSpan page = changes.Change(bitmapPage);
    format::WriteU32(page, 0, kBitmapPageStart);
    const format::MutableSpan bitmap = page.subspan(kBitmapPageHead);
    std::fill(bitmap.begin(), bitmap.end(), std::byte{0xFF});
    for (std::uint32_t i = 0; i < start; ++i)
        SetBit(bitmap, i, false);
    for (std::size_t i = 0; i < 8 * bits.size(); ++i)
        SetBit(bitmap, start + i, TestBit(bits, i));
    SetBit(bitmap, Raw(bitmapPage), false);

    const format::MutableSpan map =
        format::RowBytes(changes.Change(kFreePages.page), kFreePages.slot);
    std::fill(map.begin(), map.end(), std::byte{0});
    map[0] = std::byte{1};
    format::WriteU32(map, 1, Raw(bitmapPage));
}

// Whether `page` lies in a range of which no bitmap page tells.
bool LacksBitmap(const Pager& pager, PageNumber page)
{
    const Page home = pager.Read(kFreePages.page);
    const format::Span row = MapBytes(home, kFreePages);
    return FormOf(row) == MapForm::Reference &&
           BitmapPageOf(row, page, pager.Version().pageSize) == PageNumber::None;
}

// Makes `bitmapPage` tell of the range it lies in itself; all else in it is free so far.
void MakeBitmapPage(WriteSet& changes, PageNumber bitmapPage)
{
    const std::uint32_t perBitmap = PagesPerBitmap(changes.Of().Version().pageSize);
    const format::MutableSpan bytes = changes.Change(bitmapPage);
    std::fill(bytes.begin(), bytes.end(), std::byte{0xFF});
    format::WriteU32(bytes, 0, kBitmapPageStart);
    SetBit(bytes.subspan(kBitmapPageHead), Raw(bitmapPage) % perBitmap, false);
    const format::MutableSpan map =
        format::RowBytes(changes.Change(kFreePages.page), kFreePages.slot);
    format::WriteU32(map, 1 + std::size_t{4} * (Raw(bitmapPage) / perBitmap), Raw(bitmapPage));
}

void Mark(WriteSet& changes, PageNumber page, bool isFree)
{
    const std::size_t pageSize = changes.Of().Version().pageSize;
    const format::MutableSpan row =
        format::RowBytes(changes.Change(kFreePages.page), kFreePages.slot);
    if (FormOf(row) == MapForm::Inline) {
        ReachInline(changes, page);
        const format::MutableSpan reached =
            format::RowBytes(changes.Change(kFreePages.page), kFreePages.slot);
        SetBit(reached.subspan(kMapHead), Raw(page) - format::ReadU32(reached, 1), isFree);
        return;
    }
    const PageNumber bitmapPage = BitmapPageOf(row, page, pageSize);
    assert(bitmapPage != PageNumber::None);
    SetBit(changes.Change(bitmapPage).subspan(kBitmapPageHead),
           Raw(page) % PagesPerBitmap(pageSize), isFree);
}

}  // namespace

PageNumber TakeFreePage(WriteSet& changes, PageNumber above)
{
    const Pager& pager = changes.Of();
    const auto lowest = LowestFree(pager, Raw(above) + 1);
    if (lowest && *lowest < pager.PageCount()) {
        const PageNumber page{*lowest};
        if (LacksBitmap(pager, page)) {
            MakeBitmapPage(changes, page);
            return TakeFreePage(changes, page);
        }
        Mark(changes, page, false);
        return page;
    }
    const PageNumber next{pager.PageCount()};
    const Page home = pager.Read(kFreePages.page);
    if (FormOf(MapBytes(home, kFreePages)) == MapForm::Inline && !InlineHasRoom(pager, next))
        ConvertToReference(changes, Raw(next));
    while (LacksBitmap(pager, PageNumber{pager.PageCount()}))
        MakeBitmapPage(changes, changes.AppendPage());
    const PageNumber page = changes.AppendPage();
    Mark(changes, page, false);
    return page;
}

void GiveFreePage(WriteSet& changes, PageNumber page)
{
    if (Raw(page) < 2 || Raw(page) >= changes.Of().PageCount() || IsFreePage(changes.Of(), page)) {
        throw base::NumberedError(3343).At("page " + std::to_string(Raw(page)) +
                                           " is free already");
    }
    Mark(changes, page, true);
}

bool IsFreePage(const Pager& pager, PageNumber page)
{
    const Page home = pager.Read(kFreePages.page);
    const format::Span row = MapBytes(home, kFreePages);
    if (FormOf(row) == MapForm::Inline) {
        const std::uint32_t start = format::ReadU32(row, 1);
        if (Raw(page) < start) return false;
        const std::size_t bit = Raw(page) - start;
        return bit >= 8 * (row.size() - kMapHead) || TestBit(row.subspan(kMapHead), bit);
    }
    const PageNumber bitmapPage = BitmapPageOf(row, page, pager.Version().pageSize);
    if (bitmapPage == PageNumber::None) return true;
    const Page bitmap = pager.Read(bitmapPage);
    return TestBit(BitmapOf(bitmap), Raw(page) % PagesPerBitmap(pager.Version().pageSize));
}

}  // namespace jet::pages
