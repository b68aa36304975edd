// SPDX-License-Identifier: Apache-2.0
// NewTable: a table to be made, as the maker wishes it.
#pragma once

#include "jet/catalog/FieldProperties.h"
#include "jet/format/TableDefinition.h"

#include <string>
#include <vector>

namespace jet::catalog {

// A field to be created. Units: size in characters for text, in bytes for binary, otherwise
// ignored; 0 is the largest size.
struct NewColumn {
    std::string name;
    format::ColumnType type = format::ColumnType::Long;
    int size = 0;
    bool autoNumber = false;
    std::uint8_t precision = 18, scale = 0;  // Numeric only
    FieldProperties properties;
};

struct NewIndex {
    std::string name;
    struct Part {
        std::string column;
        bool ascending = true;
    };
    std::vector<Part> columns;
    bool primary = false, unique = false, ignoreNulls = false, required = false;
};

struct NewTable {
    std::string name;
    std::vector<NewColumn> columns;
    std::vector<NewIndex> indexes;
    ValidationRule rule = {};  // of whole rows
};

}  // namespace jet::catalog
