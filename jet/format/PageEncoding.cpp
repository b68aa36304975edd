// SPDX-License-Identifier: Apache-2.0
#include "jet/format/PageEncoding.h"

#include <array>
#include <numeric>

namespace jet::format {

void ApplyKeyStream(std::uint32_t key, MutableSpan bytes)
{
    std::array<std::uint8_t, 256> permutation{};
    std::iota(permutation.begin(), permutation.end(), std::uint8_t{0});
    std::uint8_t* const state = permutation.data();
    std::uint8_t other = 0;
    for (unsigned i = 0; i < permutation.size(); ++i) {
        const std::uint8_t here = state[i];
        const auto keyByte = static_cast<std::uint8_t>(key >> (8 * (i % sizeof key)));
        other = static_cast<std::uint8_t>(other + here + keyByte);
        state[i] = state[other];
        state[other] = here;
    }
    std::uint8_t place = 0;
    other = 0;
    std::byte* const end = bytes.data() + bytes.size();
    for (std::byte* byte = bytes.data(); byte != end; ++byte) {
        const std::uint8_t here = state[++place];
        other = static_cast<std::uint8_t>(other + here);
        const std::uint8_t there = state[other];
        state[place] = there;
        state[other] = here;
        const std::uint8_t mask = state[static_cast<std::uint8_t>(here + there)];
        *byte = static_cast<std::byte>(static_cast<std::uint8_t>(*byte) ^ mask);
    }
}

void ApplyPageEncoding(MutableSpan page, PageNumber number, std::uint32_t fileKey)
{
    if (fileKey == kNotEncoded || Raw(number) == 0) return;
    ApplyKeyStream(fileKey ^ Raw(number), page);
}

}  // namespace jet::format
