// SPDX-License-Identifier: Apache-2.0
#include "tests/support/OwnMemory.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace tests {

long OwnMemory(std::string_view figure)
{
    const std::string wanted = std::string(figure) + ":";
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word != wanted) continue;
        long kilobytes = 0;
        if (status >> kilobytes) return kilobytes;
    }
    throw std::runtime_error("the system does not tell the memory of a process");
}

}  // namespace tests
