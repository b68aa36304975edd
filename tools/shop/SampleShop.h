// SPDX-License-Identifier: Apache-2.0
// SampleShop: a whole shop of invented people, vehicles and work, made from a seed.
#pragma once

#include "base/Value.h"
#include "jet/format/FileVersion.h"
#include "jet/io/File.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tools::shop {

// Requires: employees, orders at least 1; history at least 0.
struct SampleShop {
    int employees = 14;
    int orders = 160;
    int history = 900;  // finished jobs
    std::uint64_t seed = 1;
    base::Date today;    // the shop's day; its time does not count
    bool fresh = false;  // without the clock's own tables
    // Whether repair orders come with notes, estimate lines, purchases, payments and pictures: more
    // than half of a large file.
    bool papers = true;
    const jet::format::FileVersion* format = &jet::format::kJet4;
    bool encoded = false;  // under a key that follows from the seed
};

// Somebody on the board, as he stands there.
struct Technician {
    std::string name;
    std::string pin;  // empty: he is not asked
};

// Told what is being made, and how much of it is done. Units: rows.
using Progress = std::function<void(std::string_view what, int done)>;

// Makes the database at `path` and tells who works there. Rule: the same wishes give the same
// bytes. Errors: 3204 when the file exists, 3044, 3051, 3026.
std::vector<Technician> MakeSampleShop(jet::io::FileSystem& files, const std::string& path,
                                       const SampleShop& wishes, const Progress& progress);

}  // namespace tools::shop
