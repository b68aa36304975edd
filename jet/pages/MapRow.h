// SPDX-License-Identifier: Apache-2.0
// MapRow: what the bytes of a usage-map row mean.                     docs/format/usage-map.md
#pragma once

#include "jet/format/Bytes.h"
#include "jet/pages/Pager.h"
#include "jet/pages/WriteSet.h"

#include <optional>
#include <vector>

namespace jet::pages {

// Inline, or spread over bitmap pages.
//
//   inline:     00, first page (4), bitmap: bit k stands for first page + k
//   reference:  01, numbers of bitmap pages (4 each, 0 for none); each covers 8 * (page size - 4)
//   pages bitmap page: 05 01 00 00, bitmap
inline constexpr std::size_t kMapHead = 5;
inline constexpr std::size_t kBitmapPageHead = 4;
inline constexpr std::uint8_t kBitmapPageType = 5;
inline constexpr std::uint32_t kBitmapPageStart = 0x0105;  // the four bytes before the bitmap

enum class MapForm : std::uint8_t { Inline = 0, Reference = 1 };

// Errors: 3343 when the row is neither.
[[nodiscard]] MapForm FormOf(format::Span row);
[[nodiscard]] format::Span MapBytes(const Page& page, format::RowId where);
[[nodiscard]] bool TestBit(format::Span bitmap, std::size_t bit);
void SetBit(format::MutableSpan bitmap, std::size_t bit, bool on);

// Page numbers one bitmap page covers.
[[nodiscard]] std::uint32_t PagesPerBitmap(std::size_t pageSize);
// The bitmap page that covers `page`, PageNumber::None when there is none.
// Errors: 3343 when the row has no place for it.
[[nodiscard]] PageNumber BitmapPageOf(format::Span row, PageNumber page, std::size_t pageSize);
// The bitmap on a bitmap page. Errors: 3343 when it is none.
[[nodiscard]] format::Span BitmapOf(const Page& page);

}  // namespace jet::pages
