// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/MapRow.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"

namespace jet::pages {

MapForm FormOf(format::Span row)
{
    const std::uint8_t form = format::ReadU8(row, 0);
    if (form > 1 || row.size() < kMapHead)
        throw base::NumberedError(3343).At("usage map: form " + std::to_string(form));
    return static_cast<MapForm>(form);
}

format::Span MapBytes(const Page& page, format::RowId where)
{
    const format::DataPage view(page.Bytes());
    if (view.Kind(where.slot) != format::SlotKind::Row) {
        throw base::NumberedError(3343).At("usage map: no row " + std::to_string(Raw(where.page)) +
                                           ":" + std::to_string(where.slot));
    }
    return view.Row(where.slot);
}

bool TestBit(format::Span bitmap, std::size_t bit)
{
    return ((unsigned{format::ReadU8(bitmap, bit / 8)} >> (bit % 8)) & 1U) != 0;
}

void SetBit(format::MutableSpan bitmap, std::size_t bit, bool on)
{
    const auto mask = static_cast<std::uint8_t>(1U << (bit % 8));
    const std::uint8_t old = format::ReadU8(bitmap, bit / 8);
    format::WriteU8(bitmap, bit / 8, static_cast<std::uint8_t>(on ? old | mask : old & ~mask));
}

std::uint32_t PagesPerBitmap(std::size_t pageSize)
{
    return static_cast<std::uint32_t>(8 * (pageSize - kBitmapPageHead));
}

PageNumber BitmapPageOf(format::Span row, PageNumber page, std::size_t pageSize)
{
    const std::size_t index = Raw(page) / PagesPerBitmap(pageSize);
    return PageNumber{format::ReadU32(row, 1 + 4 * index)};
}

format::Span BitmapOf(const Page& page)
{
    if (format::ReadU8(page.Bytes(), 0) != kBitmapPageType)
        throw base::NumberedError(3343).At("usage map: no bitmap page");
    return page.Bytes().subspan(kBitmapPageHead);
}

}  // namespace jet::pages
