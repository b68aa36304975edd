// SPDX-License-Identifier: Apache-2.0
// TableCheck: one table: definition, maps, rows, long values and indexes.
#pragma once

#include "jet/check/Inspection.h"
#include "jet/format/RowView.h"

#include <memory>

namespace jet::check {

// A row's bytes where they really lie, and the page that keeps them alive.
struct FetchedRow {
    pages::Page page;
    format::RowView view;
};

// What was learned of a table whose definition could be read.
struct TableFacts {
    format::TableDefinition definition;
    std::vector<RowId> rows;  // by original slot, ascending

    // Nothing when the row cannot be read.
    [[nodiscard]] std::optional<FetchedRow> Fetch(const pages::Pager& pager, RowId row) const;
};

// Finds what is wrong with the table whose definition begins at `first`. Requires: a page of the
// file. Nothing when its definition cannot be read.
[[nodiscard]] std::unique_ptr<TableFacts> CheckTable(Inspection& inspection, PageNumber first);

}  // namespace jet::check
