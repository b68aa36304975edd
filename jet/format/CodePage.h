// SPDX-License-Identifier: Apache-2.0
// CodePage: text between UTF-8 and one byte a character.
#pragma once

#include "jet/format/Bytes.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet::format {

// Windows code pages by their number; 0 stands for no code page, that is UTF-16.
inline constexpr std::uint16_t kUtf16 = 0, kWindows1252 = 1252;

// Rule:   ASCII is the same in every code page.
// Errors: 3251 for any other text of a code page without tables.
[[nodiscard]] std::string DecodeCodePage(Span bytes, std::uint16_t codePage);

// Rule:   nothing is replaced: what is read again is what was given. A code without a character
// stands
//         for one of the private ones.
// Errors: 3421 for text that the code page cannot hold, 3251 as above.
[[nodiscard]] std::vector<std::byte> EncodeCodePage(std::string_view text, std::uint16_t codePage);

}  // namespace jet::format
