// SPDX-License-Identifier: Apache-2.0
// Collation97: the weights and keys of "General" order as Jet 3 has it.
#pragma once

#include "jet/format/TableDefinition.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace jet::format {

// Columns of Jet 3 files have no version of their tables; this one stands for it.
inline constexpr std::uint8_t kJet3Tables = 97;
inline constexpr SortOrder kGeneral97Order{.language = 1033, .version = kJet3Tables};

// What one Windows-1252 byte adds to a key.                  docs/format/sort-key.md
struct CharacterWeight97 {
    std::uint16_t weights;  // one byte, or two when above 0xFF
    std::uint8_t accents;   // nibbles, one for each weight that can carry an accent
};
extern const std::array<CharacterWeight97, 256> kGeneral97;

// The sort key of a text. Requires: no trailing blanks.
[[nodiscard]] std::vector<std::byte> KeyOf97(std::string_view windows1252);

}  // namespace jet::format
