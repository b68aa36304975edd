// SPDX-License-Identifier: Apache-2.0
// Relationships: what the relationships of a table demand when one of its rows changes.
#pragma once

#include "jet/catalog/Catalog.h"
#include "jet/table/RowRules.h"

#include <functional>
#include <memory>
#include <vector>

namespace jet::catalog {

// A table of the same file by the page of its definition; null when there is none.
using TableAt = std::function<std::shared_ptr<OpenTable>(format::PageNumber)>;

// Places of the columns of an index. Errors: 3343 when it has one that the table lacks.
[[nodiscard]] std::vector<std::size_t> ColumnsOf(const format::TableDefinition& table,
                                                 const format::IndexDefinition& index);

// Rule:   looked at when the row is written, so a row may refer to itself. A key with a null in it
//         refers to nothing. Rows that a cascade changes obey the rules of their own tables.
// Errors: 3201 the row refers to none, 3200 others refer to it; those of the rows that a cascade
//         changes; 3035 cascades without end; 3343 a relationship without its other side.
class Relationships {
public:
    // Requires: `table` stays where it is and outlives them.
    Relationships(const OpenTable& table, TableAt tableAt);

    void Follow(pages::WriteSet& changes, const table::ChangedRow& row) const;

private:
    struct Side;
    [[nodiscard]] Side OtherSide(const format::NamedIndex& index) const;
    void RequireReferenced(pages::WriteSet& changes, const format::NamedIndex& index,
                           const std::vector<base::Value>& key) const;
    void ChangeReferring(pages::WriteSet& changes, const format::NamedIndex& index,
                         const std::vector<base::Value>& former,
                         const std::vector<base::Value>* present) const;

    const OpenTable& table_;
    TableAt tableAt_;
    mutable std::size_t depth_ = 0;  // cascades that go on at this moment
};

}  // namespace jet::catalog
