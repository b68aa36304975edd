// SPDX-License-Identifier: Apache-2.0
// ExpectExport: what a test expects of exported rows.
#pragma once

#include "tests/support/MdbExport.h"
#include "tests/support/ShopWorld.h"

#include <string>
#include <vector>

namespace tests {

// The row has these values, numbers compared as numbers; of its other fields nothing is said.
void ExpectFields(const ExportedRow& row, const ExportedRow& expected);
// These fields changed, to these values, and no others.
void ExpectChange(const ExportedRow& former, const ExportedRow& row, const ExportedRow& expected);
// The one row with that value. Rule: none is std::runtime_error.
[[nodiscard]] const ExportedRow& RowWith(const std::vector<ExportedRow>& rows,
                                         const std::string& field, const std::string& value);
// Every table but these reads exactly the same in both files.
void ExpectSameTables(const std::filesystem::path& before, const std::filesystem::path& after,
                      const std::vector<std::string>& except);
// The file reads so: every row of these tables with every value, numbers compared as numbers, and
// no other row. Rule: the order of rows is not compared; a row that moved is told where it lies.
void ExpectReadsTheSame(const std::filesystem::path& file, const Contents& contents);

}  // namespace tests
