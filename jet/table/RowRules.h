// SPDX-License-Identifier: Apache-2.0
// RowRules: what the rows of a table must satisfy besides its keys, told by who knows names and
// expressions.
#pragma once

#include "jet/table/KeyChanges.h"
#include "jet/table/RowSource.h"

#include <span>

namespace jet::table {

// A row about to be stored.
struct RowToStore {
    bool isNew = false;
    std::span<const Assignment> values;  // what is assigned
    const ColumnReader& valueOf;         // every column as it will be; null for no value
};

class RowRules {
public:
    RowRules() = default;
    RowRules(const RowRules&) = delete;
    RowRules& operator=(const RowRules&) = delete;
    virtual ~RowRules() = default;

    // Called before anything of the row is written. Throws when it may not be stored so.
    virtual void Check(const RowToStore& row) const = 0;
};

}  // namespace jet::table
