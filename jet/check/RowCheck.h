// SPDX-License-Identifier: Apache-2.0
// RowCheck: one stored row against its table's definition.
#pragma once

#include "jet/check/Inspection.h"
#include "jet/format/LongValueHeader.h"
#include "jet/format/RowView.h"

#include <vector>

namespace jet::check {

// A long value that a row refers to.
struct LongValueReference {
    RowId row;
    std::size_t column = 0;
    format::LongValueHeader header;
};

// What can be wrong with the rows of one table. Requires: inspection and table outlive it.
class RowCheck {
public:
    RowCheck(Inspection& inspection, const format::TableDefinition& table);

    // Finds what is wrong with a row; its references to long values outside the row are added to
    // `references`. `at` is where its bytes lie, `offset` their place on that page.
    // Returns whether its fields can be read.
    [[nodiscard]] bool Check(const format::RowView& row, RowId at, std::size_t offset,
                             std::vector<LongValueReference>& references) const;

private:
    Inspection& inspection_;
    // By count of columns: where the fixed ones among them end.
    std::vector<std::size_t> fixedEnds_;
    // Places of the columns whose bytes can be wrong although they lie in the row.
    std::vector<std::size_t> questionable_;
};

// The row's view, nothing (and a finding) when it is too short to be one.
[[nodiscard]] std::optional<format::RowView> ViewRow(Inspection& inspection, format::Span bytes,
                                                     const format::TableDefinition& table, RowId at,
                                                     std::size_t offset);

}  // namespace jet::check
