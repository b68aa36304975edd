// SPDX-License-Identifier: Apache-2.0
// CodePageTables: what the upper half of each Windows code page stands for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace jet::format {

// The characters of the codes from 80; the codes below are those of ASCII in every code page.
inline constexpr std::size_t kUpperHalf = 128;
using CodePageTable = std::span<const char16_t, kUpperHalf>;

// Nothing for a code page without a table: 1252, which has functions of its own, and all in which a
// character can have two bytes.
[[nodiscard]] std::optional<CodePageTable> FindCodePage(std::uint16_t number);

}  // namespace jet::format
