// SPDX-License-Identifier: Apache-2.0
// Checksum: CRC-32 over bytes, to know a torn write from a whole one.
#pragma once

#include "jet/format/Bytes.h"

#include <cstdint>

namespace jet::pages {

[[nodiscard]] std::uint32_t Checksum(format::Span bytes, std::uint32_t seed = 0);

}  // namespace jet::pages
