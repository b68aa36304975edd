// SPDX-License-Identifier: Apache-2.0
// Reading: what was read of the rows of an answer, so that both engines can be seen to agree.
#pragma once

#include <cstddef>

namespace bench {

// Rule: numbers and dates are added as they are, a text as its length, in the order of reading.
struct Reading {
    int rows = 0;
    double sum = 0;

    void AddNumber(double number) { sum += number; }
    void AddText(std::size_t length) { sum += static_cast<double>(length); }
    friend bool operator==(const Reading&, const Reading&) = default;
};

}  // namespace bench
