// SPDX-License-Identifier: Apache-2.0
// Index: one B-tree of a table, found in, kept true and walked.
#pragma once

#include "base/Value.h"
#include "jet/format/TableDefinition.h"
#include "jet/index/Cursor.h"
#include "jet/pages/UsageMap.h"

#include <span>
#include <vector>

namespace jet::index {

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

    // The key of a row. `values` are the row's values in the order of the index's columns; fewer
    // values than columns make the beginning of a key, for Rows.
    // Errors: 3421 for text that the tables of its sort order cannot key, and those of
    //         format::AppendKeyColumn; 3343 when the definition names a column that is not there.
    [[nodiscard]] RowKey KeyOf(std::span<const base::Value> values) const;

    // Whether a row with this key may be stored; `self` is the row's own place when it exists
    // already. Rule: a key with a null in it never conflicts.
    // Errors: 3022 another row has the key, 3058 a null where none may be, 3047 (Record is too
    //         large) for a key that does not fit.
    void CheckStorable(const RowKey& key, const RowId* self) const;

    // Rule: rows that the null rules leave out are passed over by both. Insert counts a new key in
    //       the table definition's entry counts, Erase counts nothing.
    // Errors: 3049 when Insert finds the entry there already, or Erase does not find it.
    void Insert(pages::WriteSet& changes, const RowKey& key, RowId row);
    void Erase(pages::WriteSet& changes, const RowKey& key, RowId row);

    // Rows whose key begins with `prefix` (whole key columns), in key order.
    // Rule: when `prefix` ends with an empty binary value, longer values match too.
    [[nodiscard]] std::vector<RowId> Rows(const Key& prefix) const;

    // Every entry in key order.
    [[nodiscard]] Cursor Walk() const { return {pager_, definition_.root}; }

    // An empty root leaf for a new index, owned through `usageMap`. Returns its page.
    [[nodiscard]] static PageNumber MakeRoot(pages::WriteSet& changes, PageNumber table,
                                             RowId usageMap);

private:
    [[nodiscard]] bool LeftOut(const RowKey& key) const
    {
        return definition_.ignoreNulls && key.allNull;
    }
    [[nodiscard]] TreePlace Place() const;
    void CountNewKey(pages::WriteSet& changes) const;

    pages::Pager& pager_;
    const format::TableDefinition& table_;
    const format::IndexDefinition& definition_;
};

}  // namespace jet::index
