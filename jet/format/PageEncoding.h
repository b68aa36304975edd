// SPDX-License-Identifier: Apache-2.0
// PageEncoding: the key stream under which the pages of an encoded file are stored.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/PageNumber.h"
#include "jet/format/Protection.h"

#include <cstdint>

namespace jet::format {

// XORs the bytes with the RC4 stream of a key: once hides them, once more shows them again.
void ApplyKeyStream(std::uint32_t key, MutableSpan bytes);

// Turns a page as it is stored into the page itself, and back.
// Rule:   page 0 is stored as it is in every file.
// Source: docs/format/header-page.md
void ApplyPageEncoding(MutableSpan page, PageNumber number, std::uint32_t fileKey);

}  // namespace jet::format
