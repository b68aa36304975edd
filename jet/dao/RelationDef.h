// SPDX-License-Identifier: Apache-2.0
// RelationDef: a relationship of two tables, read from a database or to be appended to one.
#pragma once

#include <string>
#include <vector>

namespace dao {

// Attribute bits of a relationship.
inline constexpr int kRelationUnique = 1;
inline constexpr int kRelationDontEnforce = 2;
inline constexpr int kRelationUpdateCascade = 256;
inline constexpr int kRelationDeleteCascade = 4096;

// Rows of `foreignTable` refer to the row of `table` that has their values.
struct RelationDef {
    std::string name;
    std::string table, foreignTable;
    int attributes = 0;
    struct Pair {
        std::string field, foreignField;
    };
    std::vector<Pair> fields;
};

}  // namespace dao
