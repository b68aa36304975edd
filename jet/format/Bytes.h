// SPDX-License-Identifier: Apache-2.0
// Bytes: little-endian integers and IEEE numbers in spans, never outside the bytes that were given.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace jet::format {

using Span = std::span<const std::byte>;
using MutableSpan = std::span<std::byte>;

// Errors (all readers and writers): 3343 when the bytes asked for lie outside the span.
[[noreturn]] void RefuseOutside(std::size_t size, std::size_t offset, std::size_t width);
inline void RequireInside(std::size_t size, std::size_t offset, std::size_t width)
{
    if (offset > size || size - offset < width) [[unlikely]]
        RefuseOutside(size, offset, width);
}

template <class T>
[[nodiscard]] T ReadScalar(Span bytes, std::size_t offset)
{
    static_assert(std::endian::native == std::endian::little);
    RequireInside(bytes.size(), offset, sizeof(T));
    T value{};
    std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

template <class T>
void WriteScalar(MutableSpan bytes, std::size_t offset, T value)
{
    RequireInside(bytes.size(), offset, sizeof(T));
    std::memcpy(bytes.data() + offset, &value, sizeof(T));
}

[[nodiscard]] inline std::uint8_t ReadU8(Span b, std::size_t at)
{
    return ReadScalar<std::uint8_t>(b, at);
}
[[nodiscard]] inline std::uint16_t ReadU16(Span b, std::size_t at)
{
    return ReadScalar<std::uint16_t>(b, at);
}
[[nodiscard]] inline std::uint32_t ReadU32(Span b, std::size_t at)
{
    return ReadScalar<std::uint32_t>(b, at);
}
[[nodiscard]] inline std::int32_t ReadI32(Span b, std::size_t at)
{
    return ReadScalar<std::int32_t>(b, at);
}
[[nodiscard]] inline double ReadF64(Span b, std::size_t at)
{
    return ReadScalar<double>(b, at);
}
// Three bytes, as page numbers stand in row pointers (least significant first).
[[nodiscard]] std::uint32_t ReadU24(Span bytes, std::size_t offset);

inline void WriteU8(MutableSpan b, std::size_t at, std::uint8_t v)
{
    WriteScalar(b, at, v);
}
inline void WriteU16(MutableSpan b, std::size_t at, std::uint16_t v)
{
    WriteScalar(b, at, v);
}
inline void WriteU32(MutableSpan b, std::size_t at, std::uint32_t v)
{
    WriteScalar(b, at, v);
}
void WriteU24(MutableSpan bytes, std::size_t offset, std::uint32_t value);

// Compares whole memory at once, which the standard algorithms do not do for std::byte.
[[nodiscard]] inline bool SameBytes(Span left, Span right)
{
    return left.size() == right.size() &&
           (left.empty() || std::memcmp(left.data(), right.data(), left.size()) == 0);
}

// The part of a span. Errors: 3343.
[[nodiscard]] Span Slice(Span bytes, std::size_t offset, std::size_t length);

}  // namespace jet::format
