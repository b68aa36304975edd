// SPDX-License-Identifier: Apache-2.0
// DerivedIndex: which pages hold rows with given numbers in given columns, worked out from the rows
// of a table that has no index for them and kept in memory.
#pragma once

#include "jet/table/RowSource.h"
#include "jet/table/StoredRows.h"

#include <map>
#include <vector>

namespace jet::table {

// Rule: it leads to every page that has such a row, and to some that have not (any more): whoever
//       uses it looks at the rows.
class DerivedIndex {
public:
    // Of these columns, places in `table`. Requires: Knows each of them.
    // Errors: 3343.
    DerivedIndex(pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table,
                 std::vector<std::size_t> columns);

    // Whether a column can be asked for: whole numbers, doubles and dates can.
    [[nodiscard]] static bool Knows(const format::TableDefinition& table, std::size_t column);

    // Catches up with what was written since. False when that is not known, or when the table was
    // changed in a way that it cannot follow; then it is of no more use. Errors: 3343.
    [[nodiscard]] bool CatchUp();

    // Ascending. Requires: one value for each column, in their order, of the column's own type;
    //                      CatchUp in the same reading.
    [[nodiscard]] std::vector<PageNumber> PagesWith(std::span<const base::Value> values) const;

private:
    void Add(RowCursor& rows, std::vector<std::uint64_t>& into) const;
    [[nodiscard]] bool HasMovedRows(PageNumber page) const;

    pages::Pager* pager_;
    std::shared_ptr<const format::TableDefinition> table_;
    std::vector<std::size_t> columns_;
    std::uint64_t changeCount_ = 0;
    // A fingerprint of the values above, the page's number below.
    std::vector<std::uint64_t> sorted_;
    std::vector<std::uint64_t> recent_;  // not sorted in yet
};

// The derived indexes of one table.
class DerivedIndexes {
public:
    // What is done about an index that is not there yet.
    enum class Missing { Make, DoWithout };

    // The pages that may hold rows with these keys, ascending; nothing when a scan serves as well.
    // Rule: an index is worked out when it is to be made for the second time, for most questions
    //       are asked once.
    [[nodiscard]] std::optional<std::vector<PageNumber>>
    PagesWith(pages::Pager& pager, const std::shared_ptr<const format::TableDefinition>& table,
              std::span<const Assignment> keys, Missing missing = Missing::Make);

private:
    struct Use {
        std::shared_ptr<const format::TableDefinition> table;  // as it was when it was asked
        bool asked = false;
        std::optional<DerivedIndex> index;
    };
    std::map<std::vector<std::size_t>, Use> uses_;  // by columns
};

}  // namespace jet::table
