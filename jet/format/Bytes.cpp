// SPDX-License-Identifier: Apache-2.0
#include "jet/format/Bytes.h"

#include "base/NumberedError.h"

namespace jet::format {

void RefuseOutside(std::size_t size, std::size_t offset, std::size_t width)
{
    throw base::NumberedError(3343).At("offset " + std::to_string(offset) + ", " +
                                       std::to_string(width) + " bytes wanted of " +
                                       std::to_string(size));
}

std::uint32_t ReadU24(Span bytes, std::size_t offset)
{
    RequireInside(bytes.size(), offset, 3);
    return std::to_integer<std::uint32_t>(bytes[offset]) |
           (std::to_integer<std::uint32_t>(bytes[offset + 1]) << 8) |
           (std::to_integer<std::uint32_t>(bytes[offset + 2]) << 16);
}

void WriteU24(MutableSpan bytes, std::size_t offset, std::uint32_t value)
{
    RequireInside(bytes.size(), offset, 3);
    for (std::size_t i = 0; i < 3; ++i)
        bytes[offset + i] = static_cast<std::byte>(value >> (8 * i));
}

Span Slice(Span bytes, std::size_t offset, std::size_t length)
{
    RequireInside(bytes.size(), offset, length);
    return bytes.subspan(offset, length);
}

}  // namespace jet::format
