// SPDX-License-Identifier: Apache-2.0
// Collation: the weights by which one language orders its characters.
#pragma once

#include "jet/format/TableDefinition.h"

#include <array>
#include <cstdint>
#include <span>

namespace jet::format {

// The diacritic byte of a letter without one.
inline constexpr std::uint8_t kNeutralDiacritic = 2;

// What one UTF-16 unit adds to a sort key.                   docs/format/sort-key.md
struct CharacterWeight {
    enum class Class : std::uint8_t {
        Unknown,    // not in the tables: no key can be made
        Ignored,    // adds nothing
        Special,    // no weight; `special` and its place decide when all else is equal
        Weight,     // one position: `weights` of one byte or two
        Expansion,  // two positions: two weights of one byte each, or of two
    };
    Class kind = Class::Unknown;
    std::uint32_t weights = 0;  // as many bytes as it has, the first one highest
    std::uint8_t diacritic = 0;
    std::uint8_t special = 0;
};

// A character beyond U+00FF.
struct FarCharacter {
    char16_t unit;
    CharacterWeight weight;
};

// The tables of one sort order.
struct Collation {
    std::span<const CharacterWeight, 256> latin1;
    std::span<const FarCharacter> far;  // ascending by unit
    bool reverseDiacritics;             // French: the last accent decides first

    [[nodiscard]] CharacterWeight Of(char16_t unit) const;
};

extern const Collation kGeneralLegacy;
extern const Collation kFrenchLegacy;
extern const Collation kGeneral1;

// The tables of a sort order; nullptr when there are none.
[[nodiscard]] const Collation* FindCollation(SortOrder order);

}  // namespace jet::format
