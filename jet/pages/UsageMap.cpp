// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/UsageMap.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
#include "jet/pages/MapRow.h"

#include <algorithm>
#include <bit>

namespace jet::pages {

namespace {

// Calls `each` with base + bit for every set bit, in ascending order.
template <class Each>
void ForEachBit(format::Span bitmap, std::uint32_t base, Each each)
{
    std::size_t at = 0;
    const auto eachOf = [&](std::uint64_t bits) {
        for (; bits != 0; bits &= bits - 1)
            each(PageNumber{base + static_cast<std::uint32_t>(8 * at) +
                            static_cast<std::uint32_t>(std::countr_zero(bits))});
    };
    for (; at + sizeof(std::uint64_t) <= bitmap.size(); at += sizeof(std::uint64_t))
        eachOf(format::ReadScalar<std::uint64_t>(bitmap, at));
    for (; at < bitmap.size(); ++at)
        eachOf(format::ReadU8(bitmap, at));
}

template <class Each>
void ForEachPage(const Pager& pager, format::RowId where, Each each)
{
    const Page home = pager.Read(where.page);
    const format::Span row = MapBytes(home, where);
    if (FormOf(row) == MapForm::Inline) {
        ForEachBit(row.subspan(kMapHead), format::ReadU32(row, 1), each);
        return;
    }
    const std::uint32_t perBitmap = PagesPerBitmap(pager.Version().pageSize);
    for (std::uint32_t i = 0; 1 + 4 * (std::size_t{i} + 1) <= row.size(); ++i) {
        const PageNumber bitmapPage{format::ReadU32(row, 1 + std::size_t{4} * i)};
        if (bitmapPage == PageNumber::None) continue;
        const Page page = pager.Read(bitmapPage);
        ForEachBit(BitmapOf(page), i * perBitmap, each);
    }
}

// The page of the last set bit, None without one. Every stored row asks, so by words from the end.
PageNumber HighestPage(format::Span bitmap, std::uint32_t base)
{
    const auto page = [base](std::size_t byte, std::uint64_t bits) {
        return PageNumber{base + static_cast<std::uint32_t>(8 * byte) +
                          static_cast<std::uint32_t>(std::bit_width(bits)) - 1};
    };
    std::size_t end = bitmap.size();
    for (; end >= sizeof(std::uint64_t); end -= sizeof(std::uint64_t)) {
        const std::size_t at = end - sizeof(std::uint64_t);
        if (const auto word = format::ReadScalar<std::uint64_t>(bitmap, at); word != 0)
            return page(at, word);
    }
    while (end-- > 0)
        if (const std::uint8_t byte = format::ReadU8(bitmap, end); byte != 0)
            return page(end, byte);
    return PageNumber::None;
}

// Adds to an inline map in the ways that keep it inline; false when it cannot be kept.
bool AddInline(WriteSet& changes, format::RowId where, PageNumber page)
{
    const format::MutableSpan home = changes.Change(where.page);
    format::MutableSpan row = format::RowBytes(home, where.slot);
    const format::Span bitmap = format::Span(row).subspan(kMapHead);
    const std::size_t bits = 8 * bitmap.size();
    std::uint32_t start = format::ReadU32(row, 1);
    const bool inside = Raw(page) >= start && Raw(page) - start < bits;
    // An empty map that does not reach the page begins anew there.
    if (!inside &&
        std::all_of(bitmap.begin(), bitmap.end(), [](std::byte b) { return b == std::byte{0}; })) {
        start = Raw(page) & ~7U;
        format::WriteU32(row, 1, start);
    }
    if (Raw(page) < start) return false;
    const std::size_t bit = Raw(page) - start;
    if (bit >= bits) {
        const std::size_t growth = 4 * ((bit - bits) / 32 + 1);
        if (growth > format::DataPage(home).FreeBytes()) return false;
        format::ResizeRow(home, where.slot, row.size() + growth);
        row = format::RowBytes(home, where.slot);
    }
    SetBit(row.subspan(kMapHead), bit, true);
    return true;
}

void AddToBitmapPage(WriteSet& changes, format::RowId where, PageNumber page)
{
    const std::size_t pageSize = changes.Of().Version().pageSize;
    const std::uint32_t perBitmap = PagesPerBitmap(pageSize);
    PageNumber bitmapPage =
        BitmapPageOf(format::RowBytes(changes.Change(where.page), where.slot), page, pageSize);
    if (bitmapPage == PageNumber::None) {
        bitmapPage = changes.Allocate();
        format::WriteU32(changes.Change(bitmapPage), 0, kBitmapPageStart);
        const format::MutableSpan row = format::RowBytes(changes.Change(where.page), where.slot);
        format::WriteU32(row, 1 + std::size_t{4} * (Raw(page) / perBitmap), Raw(bitmapPage));
    }
    SetBit(changes.Change(bitmapPage).subspan(kBitmapPageHead), Raw(page) % perBitmap, true);
}

// The members go to bitmap pages. Never converted back.
void ConvertToReference(WriteSet& changes, format::RowId where,
                        const std::vector<PageNumber>& members)
{
    const format::MutableSpan row = format::RowBytes(changes.Change(where.page), where.slot);
    std::fill(row.begin(), row.end(), std::byte{0});
    row[0] = std::byte{1};
    for (const PageNumber member : members)
        AddToBitmapPage(changes, where, member);
}

}  // namespace

bool UsageMap::Contains(PageNumber page) const
{
    const Page home = pager_.Read(where_.page);
    const format::Span row = MapBytes(home, where_);
    if (FormOf(row) == MapForm::Inline) {
        const std::uint32_t start = format::ReadU32(row, 1);
        if (Raw(page) < start) return false;
        const std::size_t bit = Raw(page) - start;
        return bit < 8 * (row.size() - kMapHead) && TestBit(row.subspan(kMapHead), bit);
    }
    const std::size_t pageSize = pager_.Version().pageSize;
    if (1 + 4 * (std::size_t{Raw(page)} / PagesPerBitmap(pageSize) + 1) > row.size()) return false;
    const PageNumber bitmapPage = BitmapPageOf(row, page, pageSize);
    if (bitmapPage == PageNumber::None) return false;
    const Page bitmap = pager_.Read(bitmapPage);
    return TestBit(BitmapOf(bitmap), Raw(page) % PagesPerBitmap(pageSize));
}

std::vector<PageNumber> UsageMap::Pages() const
{
    std::vector<PageNumber> pages;
    ForEachPage(pager_, where_, [&](PageNumber page) { pages.push_back(page); });
    return pages;
}

PageNumber UsageMap::Last() const
{
    const Page home = pager_.Read(where_.page);
    const format::Span row = MapBytes(home, where_);
    if (FormOf(row) == MapForm::Inline)
        return HighestPage(row.subspan(kMapHead), format::ReadU32(row, 1));
    const std::uint32_t perBitmap = PagesPerBitmap(pager_.Version().pageSize);
    for (auto i = static_cast<std::uint32_t>((row.size() - 1) / 4); i-- > 0;) {
        const PageNumber bitmapPage{format::ReadU32(row, 1 + std::size_t{4} * i)};
        if (bitmapPage == PageNumber::None) continue;
        const Page page = pager_.Read(bitmapPage);
        const PageNumber last = HighestPage(BitmapOf(page), i * perBitmap);
        if (last != PageNumber::None) return last;
    }
    return PageNumber::None;
}

void UsageMap::Add(WriteSet& changes, PageNumber page)
{
    const Page home = pager_.Read(where_.page);
    if (FormOf(MapBytes(home, where_)) == MapForm::Inline) {
        if (AddInline(changes, where_, page)) return;
        ConvertToReference(changes, where_, Pages());
    }
    AddToBitmapPage(changes, where_, page);
}

void UsageMap::Remove(WriteSet& changes, PageNumber page)
{
    if (!Contains(page)) return;
    const format::MutableSpan row = format::RowBytes(changes.Change(where_.page), where_.slot);
    if (FormOf(row) == MapForm::Inline) {
        SetBit(row.subspan(kMapHead), Raw(page) - format::ReadU32(row, 1), false);
        return;
    }
    const std::size_t pageSize = pager_.Version().pageSize;
    const PageNumber bitmapPage = BitmapPageOf(row, page, pageSize);
    SetBit(changes.Change(bitmapPage).subspan(kBitmapPageHead),
           Raw(page) % PagesPerBitmap(pageSize), false);
}

format::RowId UsageMap::Make(WriteSet& changes, PageNumber page)
{
    const std::vector<std::byte> row(changes.Of().Version().mapRow);
    return {page, format::AppendRow(changes.Change(page), row)};
}

namespace {

// Another page, of a map that lies, is not given away.
void FreeBitmapPage(WriteSet& changes, PageNumber page)
{
    if (format::ReadU8(changes.Of().Read(page).Bytes(), 0) != kBitmapPageType)
        throw base::NumberedError(3343).At("page " + std::to_string(Raw(page)) +
                                           " is no page of a map");
    changes.Free(page);
}

}  // namespace

void UsageMap::Drop(WriteSet& changes, format::RowId where)
{
    const Page home = changes.Of().Read(where.page);
    const format::Span row = MapBytes(home, where);
    if (FormOf(row) == MapForm::Reference)
        for (std::size_t at = 1; at + 4 <= row.size(); at += 4)
            if (const PageNumber bitmap{format::ReadU32(row, at)}; bitmap != PageNumber::None)
                FreeBitmapPage(changes, bitmap);
    const format::MutableSpan page = changes.Change(where.page);
    format::DeleteRow(page, where.slot);
    if (format::DataPage(page).Empty()) changes.Free(where.page);
}

}  // namespace jet::pages
