// SPDX-License-Identifier: Apache-2.0
// Reading: what was read of the rows of an answer, so that two engines can be seen to agree.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace bench {

// Rule: numbers and dates are added as they are, a text as its length.
struct Reading {
    int rows = 0;
    double sum = 0;

    void AddNumber(double number) { sum += number; }
    void AddText(std::size_t length) { sum += static_cast<double>(length); }
};

// Sums of many numbers differ in their last digits when they are added in another order.
[[nodiscard]] inline bool Agree(const Reading& one, const Reading& other)
{
    const double size = std::max({1.0, std::abs(one.sum), std::abs(other.sum)});
    return one.rows == other.rows && std::abs(one.sum - other.sum) <= 1e-9 * size;
}

}  // namespace bench
