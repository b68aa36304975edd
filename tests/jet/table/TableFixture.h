// SPDX-License-Identifier: Apache-2.0
// TableFixture: tables in a database that lives in memory.
#pragma once

#include "jet/catalog/NewTable.h"
#include "jet/catalog/TableDesign.h"
#include "jet/io/MemoryFile.h"
#include "jet/table/NativeTable.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tests {

using base::Value;
using jet::format::ColumnType;
using jet::format::RowId;
using jet::table::NativeTable;

// A row's values in field order.
using RowValues = std::vector<Value>;

class TableFixture : public testing::Test {
protected:
    explicit TableFixture(const jet::format::FileVersion& version = jet::format::kJet4);

    // Makes a table and opens it; its texts are as in a new database, unless told otherwise.
    std::unique_ptr<NativeTable> Make(const jet::catalog::NewTable& design);
    std::unique_ptr<NativeTable> Make(const jet::catalog::NewTable& design,
                                      const jet::catalog::DatabaseText& text);

    jet::io::MemoryFileSystem files_;
    std::shared_ptr<jet::pages::Pager> pager_;
};

[[nodiscard]] jet::catalog::NewColumn Column(const char* name, ColumnType type, int size = 0);
// All values of a row as assignments.
[[nodiscard]] std::vector<jet::table::Assignment> Assignments(const RowValues& values);
[[nodiscard]] RowValues ValuesOf(const NativeTable& table, const jet::format::RowView& row);
// Rows in storage order.
struct ScannedRow {
    RowId id;
    RowValues values;
};
[[nodiscard]] std::vector<ScannedRow> Scanned(const NativeTable& table);
// One column of all rows, in storage order.
[[nodiscard]] RowValues ScannedColumn(const NativeTable& table, std::size_t column);

}  // namespace tests
