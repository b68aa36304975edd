// SPDX-License-Identifier: Apache-2.0
#include "jet/format/LongValueHeader.h"

#include "base/NumberedError.h"
#include "jet/format/RowPointer.h"

namespace jet::format {

namespace {

constexpr unsigned kFormShift = 30;
constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;

}  // namespace

LongValueHeader ReadLongValueHeader(Span field)
{
    if (field.empty()) return {};
    RequireInside(field.size(), 0, kLongValueHeaderSize);
    const std::uint32_t word = ReadU32(field, 0);
    const std::uint32_t form = word >> kFormShift;
    if (form > 2) throw base::NumberedError(3343).At("long value of unknown form");
    return {static_cast<LongValueForm>(form), word & kLengthMask, ReadRowPointer(field, 4),
            ReadU32(field, 8)};
}

void WriteLongValueHeader(MutableSpan field, const LongValueHeader& header)
{
    const auto form = static_cast<std::uint32_t>(header.form);
    WriteU32(field, 0, (form << kFormShift) | header.length);
    WriteRowPointer(field, 4, header.first);
    WriteU32(field, 8, header.stamp);
}

}  // namespace jet::format
