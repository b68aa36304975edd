// SPDX-License-Identifier: Apache-2.0
// MdbExport: what an independent reader, the command mdb-export, finds in a database file.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tests {

// Field by name. Dates read "2004-03-15 09:05:00", null reads "<null>".
using ExportedRow = std::map<std::string, std::string>;
inline constexpr const char* kExportedNull = "<null>";

[[nodiscard]] bool MdbExportIsInstalled();
// All rows of a table. Rule: a failing command throws std::runtime_error.
[[nodiscard]] std::vector<ExportedRow> MdbExport(const std::filesystem::path& file,
                                                 const std::string& table);
// The tables that are not the system's.
[[nodiscard]] std::vector<std::string> MdbTables(const std::filesystem::path& file);

// Rows that are in one export and not in the other.
struct ExportedChange {
    std::vector<ExportedRow> removed, added;
};
[[nodiscard]] ExportedChange ChangeBetween(const std::vector<ExportedRow>& before,
                                           const std::vector<ExportedRow>& after);
// The fields of `row` that differ from those of `former`.
[[nodiscard]] ExportedRow ChangedFields(const ExportedRow& former, const ExportedRow& row);

}  // namespace tests
