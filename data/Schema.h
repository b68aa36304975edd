// SPDX-License-Identifier: Apache-2.0
// Schema: the program's own tables, field by field, in the order in which they are made.
#pragma once

#include "jet/dao/Types.h"

#include <array>
#include <span>
#include <string_view>

namespace lodrin {

// Units: size in characters; it counts for text only.
struct FieldSchema {
    std::string_view name;
    dao::FieldType type;
    int size = 0;
};

// Rule: the first field numbers the rows by itself. Text may be empty and starts so, numbers start
//       at 0, dates start empty; there is no key and no index.
struct TableSchema {
    std::string_view table;
    std::string_view step;  // what is shown while it is made
    std::span<const FieldSchema> fields;
};

// In the order in which they are made.
[[nodiscard]] const std::array<TableSchema, 4>& OwnTables();

}  // namespace lodrin
