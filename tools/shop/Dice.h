// SPDX-License-Identifier: Apache-2.0
// Dice: chance that falls the same way on every machine for the same seed.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tools::shop {

// Rule: the standard library's distributions differ from one library to the next, so none is used;
//       for the same reason no expression throws twice where the order of the throws is open.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}

    // Requires: low <= high. Both ends can come.
    [[nodiscard]] int Between(int low, int high)
    {
        const auto sides = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<int>(Next() % sides);
    }

    // True in `percent` of a hundred throws.
    [[nodiscard]] bool Percent(int percent) { return Between(1, 100) <= percent; }

    template <std::size_t N>
    [[nodiscard]] std::string_view Pick(const std::array<std::string_view, N>& words)
    {
        return words[static_cast<std::size_t>(Between(0, static_cast<int>(N) - 1))];
    }

    template <class T>
    [[nodiscard]] const T& PickOf(std::span<const T> things)
    {
        return things[static_cast<std::size_t>(Between(0, static_cast<int>(things.size()) - 1))];
    }

    // Dice of their own for another purpose, so that one table's size does not change the next.
    [[nodiscard]] Dice Fork(std::uint64_t purpose) const
    {
        return Dice(state_ ^ (purpose * 0x9E3779B97F4A7C15U));
    }

private:
    std::uint64_t Next()
    {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }

    std::uint64_t state_;
};

}  // namespace tools::shop
