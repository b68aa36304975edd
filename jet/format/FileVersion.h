// SPDX-License-Identifier: Apache-2.0
// FileVersion: what differs between the file formats, as values.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet::format {

// Rule: a version is a set of values; no algorithm asks which version it works on when a value can
// say.
struct FileVersion {
    std::uint8_t code;       // byte 0x14 of the header page: 0 Jet 3, 1 Jet 4
    std::size_t pageSize;    // bytes
    const char* name;        // as DAO names it: "3.0", "4.0"
    std::uint32_t rowLimit;  // bytes of the largest row
};

inline constexpr FileVersion kJet4{.code = 1, .pageSize = 4096, .name = "4.0", .rowLimit = 4060};

}  // namespace jet::format
