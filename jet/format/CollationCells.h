// SPDX-License-Identifier: Apache-2.0
// CollationCells: how the tables of weights spell one character.
#pragma once

#include "jet/format/Collation.h"

namespace jet::format::cells {

// I: ignored. P: no weight, coded by position. W: weight of one or two bytes. D: weight and
// diacritic. E: two weights of equal width. N: its weight is not known for certain.
constexpr CharacterWeight I()
{
    return {CharacterWeight::Class::Ignored, 0, 0, 0};
}
constexpr CharacterWeight P(std::uint8_t special)
{
    return {CharacterWeight::Class::Special, 0, 0, special};
}
constexpr CharacterWeight W(std::uint16_t weight)
{
    return {CharacterWeight::Class::Weight, weight, kNeutralDiacritic, 0};
}
constexpr CharacterWeight D(std::uint16_t weight, std::uint8_t diacritic)
{
    return {CharacterWeight::Class::Weight, weight, diacritic, 0};
}
constexpr CharacterWeight E(std::uint32_t weights)
{
    return {CharacterWeight::Class::Expansion, weights, kNeutralDiacritic, 0};
}
constexpr CharacterWeight N()
{
    return {};
}

}  // namespace jet::format::cells
