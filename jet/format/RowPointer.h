// SPDX-License-Identifier: Apache-2.0
// RowPointer: a row's place as pages refer to it, four bytes: the slot, then the page.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/PageNumber.h"

namespace jet::format {

// Rule: all zero means none.
inline constexpr std::size_t kRowPointerSize = 4;

[[nodiscard]] inline RowId ReadRowPointer(Span bytes, std::size_t at)
{
    const std::uint32_t raw = ReadU32(bytes, at);
    return {PageNumber{raw >> 8}, static_cast<std::uint16_t>(raw & 0xFF)};
}

inline void WriteRowPointer(MutableSpan bytes, std::size_t at, RowId row)
{
    WriteU32(bytes, at, (Raw(row.page) << 8) | row.slot);
}

}  // namespace jet::format
