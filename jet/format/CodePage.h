// SPDX-License-Identifier: Apache-2.0
// CodePage: text between UTF-8 and one byte a character.
#pragma once

#include "jet/format/Bytes.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet::format {

// Windows code pages by their number; 0 stands for no code page, that is UTF-16.
// Source: docs/format/text.md
inline constexpr std::uint16_t kUtf16 = 0, kWindows1252 = 1252;

// Rule:   ASCII is the same in every code page. A code that stands for no character, and in a code
//         page without a table each byte of the others, stands for a character of the private ones:
//         it is no text to read, but what is stored again is what was there. Where characters of
//         two bytes are known to begin, so does the second byte, whatever it would be alone.
[[nodiscard]] std::string DecodeCodePage(Span bytes, std::uint16_t codePage);

// Rule:   nothing is replaced: what is read again is what was given.
// Errors: 3421 for text that the code page cannot hold; 3251 for text of a code page without a
//         table that is neither ASCII nor was read from it.
[[nodiscard]] std::vector<std::byte> EncodeCodePage(std::string_view text, std::uint16_t codePage);

}  // namespace jet::format
