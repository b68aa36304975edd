// SPDX-License-Identifier: Apache-2.0
#include "tests/support/MdbExport.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace tests {

namespace {

std::string OutputOf(const std::string& command)
{
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> part{};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe))
        output.append(part.data(), count);
    if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command);
    return output;
}

// Comma-separated lines; a field in quotes may hold commas, line ends and doubled quotes.
std::vector<std::vector<std::string>> CellsOf(const std::string& text)
{
    std::vector<std::vector<std::string>> lines;
    std::vector<std::string> line;
    std::string cell;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool doubled = quoted && text.compare(at, 2, "\"\"") == 0;
        if (text[at] == '"' && !doubled) {
            quoted = !quoted;
        } else if (quoted || (text[at] != ',' && text[at] != '\n')) {
            cell.push_back(text[at]);
            if (doubled) ++at;
        } else {
            line.push_back(std::exchange(cell, {}));
            if (text[at] == '\n') lines.push_back(std::exchange(line, {}));
        }
    }
    return lines;
}

}  // namespace

bool MdbExportIsInstalled()
{
    return std::system("command -v mdb-export >/dev/null 2>&1") == 0;
}

std::vector<ExportedRow> MdbExport(const std::filesystem::path& file, const std::string& table)
{
    const std::string dates = "'%Y-%m-%d %H:%M:%S'";
    const auto lines =
        CellsOf(OutputOf("mdb-export -D " + dates + " -T " + dates + " -0 '" + kExportedNull +
                         "' '" + file.string() + "' '" + table + "'"));
    std::vector<ExportedRow> rows;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        ExportedRow row;
        for (std::size_t field = 0; field < lines[0].size(); ++field)
            row[lines[0][field]] = lines[line].at(field);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<std::string> MdbTables(const std::filesystem::path& file)
{
    std::istringstream names(OutputOf("mdb-tables -1 '" + file.string() + "'"));
    std::vector<std::string> tables;
    for (std::string name; std::getline(names, name);) {
        if (!name.empty()) tables.push_back(name);
    }
    return tables;
}

ExportedChange ChangeBetween(const std::vector<ExportedRow>& before,
                             const std::vector<ExportedRow>& after)
{
    std::vector<ExportedRow> former = before;
    std::vector<ExportedRow> now = after;
    std::sort(former.begin(), former.end());
    std::sort(now.begin(), now.end());
    ExportedChange change;
    std::set_difference(former.begin(), former.end(), now.begin(), now.end(),
                        std::back_inserter(change.removed));
    std::set_difference(now.begin(), now.end(), former.begin(), former.end(),
                        std::back_inserter(change.added));
    return change;
}

ExportedRow ChangedFields(const ExportedRow& former, const ExportedRow& row)
{
    ExportedRow changed;
    for (const auto& field : row) {
        const auto before = former.find(field.first);
        if (before == former.end() || before->second != field.second) changed.insert(field);
    }
    return changed;
}

}  // namespace tests
