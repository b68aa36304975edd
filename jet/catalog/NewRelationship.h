// SPDX-License-Identifier: Apache-2.0
// NewRelationship: a relationship of two tables, to be made or as a database tells it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace jet::catalog {

// Flag bits of a relationship.                          docs/format/relationships.md
inline constexpr std::uint32_t kNotEnforced = 0x2, kCascadeUpdates = 0x100,
                               kCascadeDeletes = 0x1000, kSetNullOnDelete = 0x2000;

// Rows of `referencing` name a row of `referenced` by its key.
struct NewRelationship {
    std::string name;
    std::string referenced, referencing;  // tables
    struct Pair {
        std::string referenced, referencing;  // columns
    };
    std::vector<Pair> columns;
    std::uint32_t flags = 0;
};

}  // namespace jet::catalog
