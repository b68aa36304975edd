// SPDX-License-Identifier: Apache-2.0
// PowerCut: the ways in which a machine stops, and the files it finds when it starts again.
#pragma once

#include "tests/support/FaultFileSystem.h"

#include <array>
#include <iosfwd>
#include <string>

namespace jet::io {
class MemoryFileSystem;
}

namespace tests {

struct PowerCut {
    LastWrite last;
    Unflushed unflushed;
};

// A torn write that is lost besides is one that never began.
inline constexpr std::array<PowerCut, 3> kPowerCuts{{
    {LastWrite::Whole, Unflushed::Kept},
    {LastWrite::Torn, Unflushed::Kept},
    {LastWrite::Whole, Unflushed::Lost},
}};

// How GoogleTest names a test of this cut.
[[nodiscard]] std::string NameOf(const PowerCut& cut);
void PrintTo(const PowerCut& cut, std::ostream* out);

// Copies a database and its journal, if there is one, as they stand.
void CopyDatabase(jet::io::MemoryFileSystem& from, const std::string& path,
                  jet::io::MemoryFileSystem& to);

}  // namespace tests
