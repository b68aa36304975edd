// SPDX-License-Identifier: Apache-2.0
// Text: UTF-8 text counted and cut in UTF-16 units, the way the platform counts characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

// Units: positions from 1 and lengths are in UTF-16 units.
[[nodiscard]] std::size_t Length(std::string_view text);

// The first `length` characters, or the whole text. Errors: 5 when `length` is negative.
[[nodiscard]] std::string Left(std::string_view text, long length);
// Everything from position `start` on. Errors: 5 when `start` is below 1.
[[nodiscard]] std::string Mid(std::string_view text, long start);
[[nodiscard]] std::string Mid(std::string_view text, long start, long length);
// Position of the first occurrence, 0 when there is none.
[[nodiscard]] long InStr(std::string_view text, std::string_view part);
// Without blanks (U+0020, nothing else) at both ends.
[[nodiscard]] std::string Trim(std::string_view text);

// ASCII-only case folding, for names of tables, fields, keys and sections.
[[nodiscard]] bool SameName(std::string_view left, std::string_view right);
[[nodiscard]] std::string LowerName(std::string_view text);

// Windows-1252 and UTF-16. A character without a Windows-1252 code becomes '?'; an ill-formed byte
// or a lone surrogate is kept readable as U+FFFD.
[[nodiscard]] std::string ToWindows1252(std::string_view utf8);
[[nodiscard]] std::string FromWindows1252(std::string_view bytes);
[[nodiscard]] std::u16string ToUtf16(std::string_view utf8);
[[nodiscard]] std::string FromUtf16(std::u16string_view units);

}  // namespace base
