// SPDX-License-Identifier: Apache-2.0
// Hex: bytes written out in a test as a hex dump shows them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

// Rule: blanks and line ends are passed over.
[[nodiscard]] std::vector<std::byte> FromHex(std::string_view text);

// Lower-case digits without blanks.
[[nodiscard]] std::string ToHex(std::span<const std::byte> bytes);

}  // namespace tests
