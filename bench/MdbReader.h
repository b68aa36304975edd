// SPDX-License-Identifier: Apache-2.0
// MdbReader: the same file read by libmdb, the library of Debian's mdbtools.
#pragma once

#include "bench/BenchShop.h"

#include <memory>
#include <string>
#include <vector>

namespace bench {

// One table of an open file. Errors: std::runtime_error.
class MdbReader {
public:
    MdbReader(const std::string& path, const std::string& table);
    ~MdbReader();
    MdbReader(const MdbReader&) = delete;
    MdbReader& operator=(const MdbReader&) = delete;

    // Counts the rows and adds up one field of numbers.
    [[nodiscard]] Reading Sum(const std::string& field);
    // Has every field of every row, `limit` of them at most, put into its place in memory as text.
    // Rule: only the number of rows is told.
    [[nodiscard]] Reading ReadAll(int limit = kAll);

private:
    struct Open;

    std::unique_ptr<Open> open_;
};

}  // namespace bench
