// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/Checksum.h"

#include <cstddef>
#include <cstring>

namespace jet::pages {

namespace {

// Table i advances the checksum of a byte over i further bytes.
using Tables = std::uint32_t[8][256];

struct ChecksumTables {
    Tables tables{};

    constexpr ChecksumTables()
    {
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t value = i;
            for (int bit = 0; bit < 8; ++bit)
                value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1) : value >> 1;
            tables[0][i] = value;
        }
        for (std::size_t table = 1; table < 8; ++table) {
            for (std::size_t i = 0; i < 256; ++i) {
                const std::uint32_t before = tables[table - 1][i];
                tables[table][i] = tables[0][before & 0xFFU] ^ (before >> 8);
            }
        }
    }
};

constexpr ChecksumTables kChecksum;

}  // namespace

// Every change of a page is summed twice, so eight bytes at a time.
std::uint32_t Checksum(format::Span bytes, std::uint32_t seed)
{
    const Tables& tables = kChecksum.tables;
    const std::byte* at = bytes.data();
    const std::byte* const end = at + bytes.size();
    std::uint32_t value = ~seed;
    for (; end - at >= 8; at += 8) {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::memcpy(&low, at, sizeof low);
        std::memcpy(&high, at + sizeof low, sizeof high);
        low ^= value;
        value = tables[7][low & 0xFFU] ^ tables[6][low >> 8 & 0xFFU] ^
                tables[5][low >> 16 & 0xFFU] ^ tables[4][low >> 24] ^ tables[3][high & 0xFFU] ^
                tables[2][high >> 8 & 0xFFU] ^ tables[1][high >> 16 & 0xFFU] ^
                tables[0][high >> 24];
    }
    for (; at != end; ++at)
        value = tables[0][(value ^ static_cast<std::uint32_t>(*at)) & 0xFFU] ^ (value >> 8);
    return ~value;
}

}  // namespace jet::pages
