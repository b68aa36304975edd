// SPDX-License-Identifier: Apache-2.0
// Layout: parts that one file version has and another has not.
#pragma once

#include "jet/format/Bytes.h"

namespace jet::format {

// The offset of a part that a version lacks.
inline constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

[[nodiscard]] inline std::uint8_t ReadU8Or(Span bytes, std::size_t at, std::uint8_t otherwise)
{
    return at == kAbsent ? otherwise : ReadU8(bytes, at);
}
[[nodiscard]] inline std::uint16_t ReadU16Or(Span bytes, std::size_t at, std::uint16_t otherwise)
{
    return at == kAbsent ? otherwise : ReadU16(bytes, at);
}

// Write a part where the version has it, nothing where it has not.
template <class T>
void WriteIfPresent(MutableSpan bytes, std::size_t at, T value)
{
    if (at != kAbsent) WriteScalar(bytes, at, value);
}

// Numbers whose width is one or two bytes by version.
[[nodiscard]] inline std::size_t ReadNumber(Span bytes, std::size_t at, std::size_t width)
{
    return width == 1 ? ReadU8(bytes, at) : ReadU16(bytes, at);
}
inline void WriteNumber(MutableSpan bytes, std::size_t at, std::size_t width, std::size_t value)
{
    if (width == 1)
        WriteU8(bytes, at, static_cast<std::uint8_t>(value));
    else
        WriteU16(bytes, at, static_cast<std::uint16_t>(value));
}

}  // namespace jet::format
