// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ForeignRows.h"

#include "jet/format/CodePage.h"
#include "tests/support/Json.h"
#include "tools/RowJson.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace tests {

namespace {

using base::Value;
using jet::format::ColumnDefinition;
using jet::format::ColumnType;

constexpr std::size_t kMostListed = 8;

// In quotes that the shell leaves alone.
std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::vector<Json> ForeignRows(const std::string& file, const std::string& table)
{
    const std::string command =
        "mdb-json -D %Y-%m-%dT%H:%M:%S -T %Y-%m-%dT%H:%M:%S " + Quoted(file) + " " + Quoted(table);
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::runtime_error("mdb-json does not start");
    std::string output;
    std::array<char, 4096> part{};
    while (const std::size_t length = std::fread(part.data(), 1, part.size(), pipe))
        output.append(part.data(), length);
    if (pclose(pipe) != 0) throw std::runtime_error("mdb-json fails over " + table);
    std::vector<Json> rows;
    for (std::size_t begin = 0, end = 0; (end = output.find('\n', begin)) != std::string::npos;
         begin = end + 1)
        rows.push_back(ParseJson(output.substr(begin, end - begin)));
    return rows;
}

// The other reader asks where a code page has a code without a character; we keep the code.
Value WithoutUnassigned(const Value& value, const ColumnDefinition& column)
{
    const std::string* text = value.As<std::string>();
    if (text == nullptr || column.codePage == 0) return value;
    std::string asked = *text;
    for (const char* unassigned : {"\xC2\x81", "\xC2\x8D", "\xC2\x8F", "\xC2\x90", "\xC2\x9D"})
        for (std::size_t at = 0; (at = asked.find(unassigned)) != std::string::npos;)
            asked.replace(at, 2, "?");
    return asked;
}

// Whether both readers found the same; the other one leaves nulls and empty texts out, and writes
// booleans as numbers.
bool Agree(ColumnType type, const Value& value, const JsonObject& row, const std::string& name)
{
    const auto found = row.find(name);
    const std::string* text = value.As<std::string>();
    if (value.IsNull() || (text != nullptr && text->empty())) return found == row.end();
    if (type == ColumnType::Boolean)
        return found->second.Number() == (*value.As<bool>() ? 1.0 : 0.0);
    return found != row.end() && found->second == ParseJson(tools::ValueJson(value));
}

bool IsComparable(const ColumnDefinition& column)
{
    switch (column.type) {
    case ColumnType::Boolean:
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
        return true;
    case ColumnType::Text:
    case ColumnType::Memo:
        return column.codePage == jet::format::kUtf16 ||
               column.codePage == jet::format::kWindows1252;
    default:
        return false;
    }
}

// Columns in which one of our rows differs from one of theirs.
std::string Differing(const jet::table::RowSource& table, const jet::format::RowView& row,
                      const Json& foreign)
{
    const auto& columns = table.Definition().columns;
    std::string differing;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (!IsComparable(columns[column])) continue;
        const Value value = WithoutUnassigned(table.ValueOf(row, column), columns[column]);
        if (!Agree(columns[column].type, value, std::get<JsonObject>(foreign.content),
                   columns[column].name))
            differing += " " + columns[column].name;
    }
    return differing;
}

}  // namespace

std::vector<std::string> DifferencesFrom(const std::string& file, const std::string& name,
                                         const jet::table::RowSource& table)
{
    std::vector<Json> foreign = ForeignRows(file, name);
    const std::size_t found = foreign.size();
    std::vector<std::string> differences;
    std::size_t count = 0, next = 0;
    for (const auto rows = table.Scan(); rows->Next(); ++count) {
        if (next >= foreign.size() || differences.size() >= kMostListed) continue;
        // The other reader tells a row that has moved where it lies now.
        const auto first = foreign.begin() + static_cast<std::ptrdiff_t>(next);
        const auto same = std::find_if(first, foreign.end(), [&](const Json& row) {
            return Differing(table, rows->Row(), row).empty();
        });
        if (same == foreign.end())
            differences.push_back("row " + std::to_string(count) + ":" +
                                  Differing(table, rows->Row(), *first));
        else
            std::swap(*first, *same);
        ++next;
    }
    if (count != found)
        differences.push_back(std::to_string(count) + " rows, the other reader finds " +
                              std::to_string(found));
    return differences;
}

}  // namespace tests
