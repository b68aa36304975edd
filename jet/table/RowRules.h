// SPDX-License-Identifier: Apache-2.0
// RowRules: what the rows of a table must satisfy besides its keys, told by who knows names and
// expressions.
#pragma once

#include "jet/table/KeyChanges.h"
#include "jet/table/RowSource.h"

#include <map>
#include <optional>
#include <span>

namespace jet::table {

// A row about to be stored.
struct RowToStore {
    bool isNew = false;
    std::span<const Assignment> values;  // what is assigned
    const ColumnReader& valueOf;         // every column as it will be; null for no value
};

// Values by column.
using ColumnValues = std::map<std::size_t, base::Value>;

// What a change was for the columns that have a part in a relationship.
struct ChangedRow {
    std::optional<ColumnValues> before;  // nothing for a new row
    std::optional<ColumnValues> after;   // nothing for a deleted one
};

class RowRules {
public:
    RowRules() = default;
    RowRules(const RowRules&) = delete;
    RowRules& operator=(const RowRules&) = delete;
    virtual ~RowRules() = default;

    // Called before anything of the row is written. Throws when it may not be stored so.
    virtual void Check(const RowToStore& row) const = 0;

    // Called when the row and its keys are written, for tables that have relationships; changes
    // other rows in the same write set as they demand. Throws when a relationship forbids the
    // change; the write set must be dropped then.
    virtual void Follow(pages::WriteSet& changes, const ChangedRow& row) const = 0;
};

}  // namespace jet::table
