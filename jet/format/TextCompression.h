// SPDX-License-Identifier: Apache-2.0
// TextCompression: text between UTF-8 and its stored form: plain or compressed UTF-16, or the bytes
// of a code page.
#pragma once

#include "jet/format/Bytes.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet::format {

enum class TextForm { Plain, CompressedIfShorter };

// Reads either form; the bytes tell which it is.
// Rule: an odd last byte is ignored.
// Source: docs/format/text.md
[[nodiscard]] std::string DecodeText(Span bytes);

// Rule: compression is all or nothing. A text is stored compressed when it is allowed, has 3 to
//       1024 characters and all of them lie between U+0001 and U+00FF.
// Errors: 3421 for text that begins with a byte order mark, which no form keeps.
[[nodiscard]] std::vector<std::byte> EncodeText(std::string_view text, TextForm form);

// The same for a text in `codePage`; kUtf16 stands for the two forms above.
// Rule:   only UTF-16 has a compressed form.
// Errors: 3421 for text that the code page cannot hold, 3251 for a code page without tables.
[[nodiscard]] std::string DecodeTextIn(std::uint16_t codePage, Span bytes);
[[nodiscard]] std::vector<std::byte> EncodeTextIn(std::uint16_t codePage, std::string_view text,
                                                  TextForm form = TextForm::Plain);

}  // namespace jet::format
