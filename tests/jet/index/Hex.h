// SPDX-License-Identifier: Apache-2.0
// Hex: bytes as readable text, for tests that compare with what stands in real files.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

inline std::string Hex(std::span<const std::byte> bytes)
{
    static const char* digits = "0123456789abcdef";
    std::string hex;
    for (const std::byte one : bytes) {
        hex += digits[std::to_integer<unsigned>(one) >> 4];
        hex += digits[std::to_integer<unsigned>(one) & 15];
    }
    return hex;
}

// Blanks between the digits are passed over.
inline std::vector<std::byte> FromHex(std::string_view hex)
{
    std::vector<std::byte> bytes;
    int high = -1;
    for (const char digit : hex) {
        if (digit == ' ') continue;
        const int value = digit <= '9' ? digit - '0' : digit - 'a' + 10;
        if (high >= 0) bytes.push_back(static_cast<std::byte>(high * 16 + value));
        high = high >= 0 ? -1 : value;
    }
    return bytes;
}

}  // namespace jet
