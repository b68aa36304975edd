// SPDX-License-Identifier: Apache-2.0
// RowKey: the key that a row should have in an index.
#pragma once

#include "jet/format/RowView.h"

#include <vector>

namespace jet::check {

struct RowKey {
    std::vector<std::byte> bytes;
    bool known = false;  // false when the row or its text cannot be keyed
    bool anyNull = false, allNull = true;
};

// Makes the keys of one index. Requires: table and index outlive it.
class KeyMaker {
public:
    KeyMaker(const format::TableDefinition& table, const format::IndexDefinition& index);

    // Rule: never fails; `key` is made anew.
    void Make(const format::RowView& row, RowKey& key) const;

private:
    struct Part {
        std::optional<std::size_t> column;  // place in the table's columns
        bool ascending = true;
    };
    void Add(const format::RowView& row, const Part& part, RowKey& key) const;

    const format::TableDefinition& table_;
    std::vector<Part> parts_;
};

}  // namespace jet::check
