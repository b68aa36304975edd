// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Sha256.h"

#include "tests/support/Hex.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tests {

namespace {

using Words = std::array<std::uint32_t, 8>;

// The first 32 bits behind the point of the roots of the first 64 primes.
std::array<std::uint32_t, 64> RoundConstants()
{
    std::array<std::uint32_t, 64> constants{};
    std::size_t count = 0;
    for (int n = 2; count < constants.size(); ++n) {
        bool prime = true;
        for (int d = 2; d * d <= n; ++d)
            prime = prime && n % d != 0;
        if (!prime) continue;
        const long double root = std::cbrt(static_cast<long double>(n));
        constants[count++] = static_cast<std::uint32_t>((root - std::floor(root)) * 4294967296.0L);
    }
    return constants;
}

void Round(Words& state, std::span<const std::byte> block)
{
    static const std::array<std::uint32_t, 64> constants = RoundConstants();
    std::array<std::uint32_t, 64> w{};
    for (std::size_t i = 0; i < 64; ++i)
        w[i / 4] = (w[i / 4] << 8) | std::to_integer<std::uint32_t>(block[i]);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t a =
            std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
        const std::uint32_t b =
            std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + a + w[i - 7] + b;
    }
    Words s = state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t mixed = std::rotr(s[4], 6) ^ std::rotr(s[4], 11) ^ std::rotr(s[4], 25);
        const std::uint32_t first =
            s[7] + mixed + ((s[4] & s[5]) ^ (~s[4] & s[6])) + constants[i] + w[i];
        const std::uint32_t other = std::rotr(s[0], 2) ^ std::rotr(s[0], 13) ^ std::rotr(s[0], 22);
        const std::uint32_t second = other + ((s[0] & s[1]) ^ (s[0] & s[2]) ^ (s[1] & s[2]));
        s = {first + second, s[0], s[1], s[2], s[3] + first, s[4], s[5], s[6]};
    }
    for (std::size_t i = 0; i < 8; ++i)
        state[i] += s[i];
}

}  // namespace

std::string Sha256(std::span<const std::byte> bytes)
{
    std::vector<std::byte> padded(bytes.begin(), bytes.end());
    padded.push_back(std::byte{0x80});
    while (padded.size() % 64 != 56)
        padded.push_back(std::byte{0});
    const std::uint64_t bits = std::uint64_t{8} * bytes.size();
    for (int shift = 56; shift >= 0; shift -= 8)
        padded.push_back(static_cast<std::byte>((bits >> shift) & 0xFF));
    Words state{0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
    for (std::size_t at = 0; at < padded.size(); at += 64)
        Round(state, std::span(padded).subspan(at, 64));
    std::vector<std::byte> digest;
    for (const std::uint32_t word : state)
        for (int shift = 24; shift >= 0; shift -= 8)
            digest.push_back(static_cast<std::byte>((word >> shift) & 0xFF));
    return ToHex(digest);
}

}  // namespace tests
