// SPDX-License-Identifier: Apache-2.0
// Station: one of several programs on a shop's file (station.cpp), started by a test.
#pragma once

#include "tests/support/Process.h"

#include <string>
#include <vector>

namespace tests {

// The program `station` with these words.
[[nodiscard]] inline Process Station(std::vector<std::string> words)
{
    words.insert(words.begin(), LODRIN_STATION);
    return Process(words);
}

}  // namespace tests
