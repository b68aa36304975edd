// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Hex.h"

#include <stdexcept>

namespace tests {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

}  // namespace

std::vector<std::byte> FromHex(std::string_view text)
{
    std::vector<std::byte> bytes;
    std::size_t high = kDigits.size();
    for (const char c : text) {
        if (c == ' ' || c == '\n') continue;
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string_view::npos) throw std::invalid_argument("no hex digit");
        if (high == kDigits.size()) {
            high = digit;
            continue;
        }
        bytes.push_back(static_cast<std::byte>(16 * high + digit));
        high = kDigits.size();
    }
    if (high != kDigits.size()) throw std::invalid_argument("half a byte");
    return bytes;
}

std::string ToHex(std::span<const std::byte> bytes)
{
    std::string text;
    for (const std::byte b : bytes) {
        const auto value = std::to_integer<unsigned>(b);
        text += kDigits[value >> 4];
        text += kDigits[value & 15];
    }
    return text;
}

}  // namespace tests
