// SPDX-License-Identifier: Apache-2.0
// Sha256: a short name for many bytes, to compare files that are not kept.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tests {

// Lower-case hex digits.
[[nodiscard]] std::string Sha256(std::span<const std::byte> bytes);

}  // namespace tests
