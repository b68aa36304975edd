// SPDX-License-Identifier: Apache-2.0
// TextCompression: text between UTF-8 and its stored form, plain or compressed UTF-16.
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
[[nodiscard]] std::vector<std::byte> EncodeText(std::string_view text, TextForm form);

}  // namespace jet::format
