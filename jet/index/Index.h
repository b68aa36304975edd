// SPDX-License-Identifier: Apache-2.0
// Index: one B-tree of a table, found in, kept true and walked.
#pragma once

#include "base/Value.h"
#include "jet/format/TableDefinition.h"
#include "jet/pages/UsageMap.h"

#include <memory>
#include <span>
#include <vector>

namespace jet::index {

using format::RowId;

// The bytes by which entries are ordered: all columns' encoded values, without the row's place.
using Key = std::vector<std::byte>;

// A row's key in one index, with what the null rules need to know.
struct RowKey {
    Key bytes;
    bool anyNull = false;
    bool allNull = false;
};

// Requires: pager, table and definition outlive it.
class Index {
public:
    Index(pages::Pager& pager, const format::TableDefinition& table,
          const format::IndexDefinition& definition);

    // The key of a row. `values` are the row's values in the order of the index's columns.
    // Errors: the number for text that the tables of its sort order cannot key.
    [[nodiscard]] RowKey KeyOf(std::span<const base::Value> values) const;

    // Whether a row with this key may be stored; `self` is the row's own place when it exists
    // already. Errors: 3022 another row has the key, 3058 a null where none may be.
    void CheckStorable(const RowKey& key, const RowId* self) const;

    // Rule: rows that the null rules leave out are passed over by all three.
    void Insert(pages::WriteSet& changes, const RowKey& key, RowId row);
    // Errors: 3049 when the entry is not there.
    void Erase(pages::WriteSet& changes, const RowKey& key, RowId row);

    // Rows whose key begins with `prefix` (whole key columns), in key order.
    [[nodiscard]] std::vector<RowId> Rows(const Key& prefix) const;

    // An empty root leaf for a new index, owned through `usageMap`. Returns its page.
    [[nodiscard]] static format::PageNumber
    MakeRoot(pages::WriteSet& changes, format::PageNumber table, format::RowId usageMap);

private:
    pages::Pager& pager_;
    const format::TableDefinition& table_;
    const format::IndexDefinition& definition_;
};

}  // namespace jet::index
