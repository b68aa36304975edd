// SPDX-License-Identifier: Apache-2.0
// ExpectedTables: what another reader found in the sample files.
#pragma once

#include "jet/pages/Pager.h"
#include "jet/table/RowSource.h"
#include "tests/support/Json.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tests {

// One sample database and the folder of expectations about it.
struct ExpectedFile {
    std::filesystem::path file, expectations;
};

// All samples with expectations; none when the folder of samples is not there.
[[nodiscard]] std::vector<ExpectedFile> ExpectedFiles();

// One object a table: table, rows, columns, indexes.
[[nodiscard]] std::vector<Json> ExpectedSchema(const ExpectedFile& sample);
// One object a row, sorted: the other reader told a row that had moved where it lay then.
[[nodiscard]] std::vector<Json> ExpectedRows(const ExpectedFile& sample, const std::string& table);
// The rows as the engine reads them, in the same form: beyond ASCII every character of a Jet 3 file
// is U+FFFD there.
[[nodiscard]] std::vector<Json> RowsOf(const jet::table::RowSource& table);

// Names and definition pages of the tables that are not the system's.
[[nodiscard]] std::map<std::string, jet::format::PageNumber>
UserTables(const std::shared_ptr<jet::pages::Pager>& pager);

}  // namespace tests
