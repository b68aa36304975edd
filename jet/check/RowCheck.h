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

// Finds what is wrong with the row; its references to long values outside the row are added to
// `references`. `at` is where its bytes lie, `offset` their place on that page.
// Returns whether its fields can be read.
bool CheckRow(Inspection& inspection, const format::RowView& row, RowId at, std::size_t offset,
              std::vector<LongValueReference>& references);

// The row's view, nothing (and a finding) when it is too short to be one.
[[nodiscard]] std::optional<format::RowView> ViewRow(Inspection& inspection, format::Span bytes,
                                                     const format::TableDefinition& table, RowId at,
                                                     std::size_t offset);

}  // namespace jet::check
