// SPDX-License-Identifier: Apache-2.0
// HeaderCodePage: the code page that a header page names, which a version with UTF-16 texts does
// not use.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"

namespace jet::format {

// Requires: `page` is the header page of such a file.
[[nodiscard]] std::uint16_t HeaderCodePageOf(Span page, const FileVersion& version);

}  // namespace jet::format
