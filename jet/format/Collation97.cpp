// SPDX-License-Identifier: Apache-2.0
#include "jet/format/Collation97.h"

namespace jet::format {

namespace {

constexpr std::uint8_t kPlainLetter = 2;

// Two nibbles a byte, a zero nibble before and behind them.
// Rule: a key with accents ends with that nibble, one without with a zero byte.
void AppendAccents(std::vector<std::byte>& key, const std::vector<std::uint8_t>& accents)
{
    std::uint8_t high = 0;
    bool half = true;
    for (const std::uint8_t nibble : accents) {
        if (half)
            key.push_back(static_cast<std::byte>(high << 4 | nibble));
        else
            high = nibble;
        half = !half;
    }
    key.push_back(half ? static_cast<std::byte>(high << 4) : std::byte{0});
}

}  // namespace

std::vector<std::byte> KeyOf97(std::string_view windows1252)
{
    std::vector<std::byte> key;
    std::vector<std::uint8_t> accents;
    std::size_t accented = 0;  // accents up to the last that is none of a plain letter
    const auto addAccent = [&](unsigned nibble) {
        accents.push_back(static_cast<std::uint8_t>(nibble));
        if (nibble != kPlainLetter) accented = accents.size();
    };
    for (const char character : windows1252) {
        const CharacterWeight97 weight = kGeneral97[static_cast<unsigned char>(character)];
        if (weight.weights > 0xFF) key.push_back(static_cast<std::byte>(weight.weights >> 8));
        key.push_back(static_cast<std::byte>(weight.weights & 0xFF));
        if (weight.accents > 0xF) addAccent(weight.accents >> 4);
        if (weight.accents != 0) addAccent(weight.accents & 0xFU);
    }
    accents.resize(accented);
    AppendAccents(key, accents);
    return key;
}

}  // namespace jet::format
