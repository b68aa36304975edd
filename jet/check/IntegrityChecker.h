// SPDX-License-Identifier: Apache-2.0
// IntegrityChecker: looks at every page, map, row, long value, index entry and catalog row of a
// database, in both directions, and tells what does not agree.
#pragma once

#include "jet/check/Defect.h"
#include "jet/io/File.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace jet::check {

struct CheckReport {
    // In the order found. Rule: a file that is wrong throughout has its first kMostDefects only.
    std::vector<Defect> defects;
    std::uint64_t notListed = 0;  // defects beyond those
    std::uint32_t pages = 0, tables = 0;
    std::uint64_t rows = 0, indexEntries = 0, longValues = 0;

    // No damage; remarks do not count.
    [[nodiscard]] bool Clean() const;
};

inline constexpr std::size_t kMostDefects = 1000;

// Told now and then how far the check is. Units: tables.
using Progress = std::function<void(std::uint32_t done, std::uint32_t of)>;

// Reads the whole file, writes nothing.
//
// Rule:   damage never raises; what lies behind a damaged part is passed over. Time and memory grow
//         with the file's size only, whatever its bytes say.
// Errors: those of opening: 3024, 3044, 3051, 3343 for a file that is no database of ours, 3031;
//         3043 when the disk fails.
[[nodiscard]] CheckReport CheckIntegrity(io::FileSystem& files, const std::string& path,
                                         const Progress& progress = {},
                                         std::string_view password = {});

}  // namespace jet::check
