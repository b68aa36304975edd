// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/Checksum.h"

#include <array>

namespace jet::pages {

namespace {

constexpr std::array<std::uint32_t, 256> MakeTable()
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1) : value >> 1;
        table[i] = value;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace

std::uint32_t Checksum(format::Span bytes, std::uint32_t seed)
{
    std::uint32_t value = ~seed;
    for (const std::byte b : bytes) {
        value = kTable[(value ^ std::to_integer<std::uint32_t>(b)) & 0xFFU] ^ (value >> 8);
    }
    return ~value;
}

}  // namespace jet::pages
