// SPDX-License-Identifier: Apache-2.0
// KeyChanges: what one row's change means for the indexes of its table.
#pragma once

#include "jet/index/Index.h"

#include <functional>
#include <optional>
#include <vector>

namespace jet::table {

using format::RowId;

// Gives a column's value, by its place in TableDefinition::columns.
using ColumnReader = std::function<base::Value(std::size_t column)>;

// The keys that go and come with a change; an index whose key stays the same has no part in it.
//
// Requires: pager and table outlive it.
class KeyChanges {
public:
    // `before` is empty for a new row, `after` for a deleted one.
    // Errors: those of index::Index::KeyOf.
    KeyChanges(pages::Pager& pager, const format::TableDefinition& table,
               const ColumnReader& before, const ColumnReader& after);

    // Errors: 3022, 3058, 3047. `self` is the row's place when it exists already.
    void Check(const RowId* self) const;
    void Apply(pages::WriteSet& changes, RowId row);

private:
    struct Change {
        index::Index tree;
        std::optional<index::RowKey> before, after;
    };
    std::vector<Change> changes_;
};

}  // namespace jet::table
