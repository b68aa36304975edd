// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ExpectedTables.h"

#include "jet/table/NativeTable.h"
#include "tests/support/Samples.h"
#include "tools/RowJson.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace tests {

namespace {

namespace fs = std::filesystem;
using jet::format::PageNumber;
using jet::table::NativeTable;

std::vector<Json> ParsedLines(const fs::path& file)
{
    std::vector<Json> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
        if (!line.empty()) lines.push_back(ParseJson(line));
    return lines;
}

std::string FileNameOf(std::string table)
{
    for (char& character : table)
        if (std::isalnum(static_cast<unsigned char>(character)) == 0 && character != '_')
            character = '_';
    return table + ".jsonl";
}

std::int32_t LongOf(const NativeTable& table, const jet::format::RowView& row, const char* column)
{
    const auto value = table.ValueOf(row, table.Definition().FindColumn(column).value());
    return value.As<std::int32_t>() == nullptr ? 0 : *value.As<std::int32_t>();
}

bool IsUserTable(const NativeTable& objects, const jet::format::RowView& row)
{
    constexpr std::int16_t localTable = 1;
    constexpr std::uint32_t systemFlags = 0x80000002;
    const auto type = objects.ValueOf(row, objects.Definition().FindColumn("Type").value());
    const auto flags = static_cast<std::uint32_t>(LongOf(objects, row, "Flags"));
    return type == base::Value(localTable) && (flags & systemFlags) == 0;
}

// Beyond ASCII, the other reader could tell no character of a code page.
std::string WithoutCodePage(const std::string& text)
{
    std::string blurred;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80)
            blurred += character;
        else if (byte >= 0xC0)
            blurred += "\xEF\xBF\xBD";  // U+FFFD for the character that begins here
    }
    return blurred;
}

// It writes a number of four bytes with all digits of its value in eight.
void SayAsTheOtherReader(Json& row, const jet::format::TableDefinition& table)
{
    auto& fields = std::get<JsonObject>(row.content);
    for (const jet::format::ColumnDefinition& column : table.columns) {
        Json& field = fields.at(column.name);
        if (auto* text = std::get_if<std::string>(&field.content)) {
            if (column.codePage != 0) *text = WithoutCodePage(*text);
        } else if (auto* number = std::get_if<double>(&field.content)) {
            if (column.type == jet::format::ColumnType::Single)
                *number = double{static_cast<float>(*number)};
        }
    }
}

}  // namespace

std::vector<ExpectedFile> ExpectedFiles()
{
    std::vector<ExpectedFile> samples;
    const fs::path expected = SampleFolder() / "expected";
    if (!fs::exists(expected)) return samples;
    for (const auto& entry : fs::directory_iterator(expected)) {
        const std::string name = entry.path().filename().string();
        const fs::path file = name.substr(0, 4) == "shop"
                                  ? SampleFolder() / name / "Kelvaro.mdb"
                                  : SampleFolder() / "mdb" / (name + ".mdb");
        samples.push_back({file, entry.path()});
    }
    std::sort(samples.begin(), samples.end(),
              [](const auto& left, const auto& right) { return left.file < right.file; });
    return samples;
}

std::vector<Json> ExpectedSchema(const ExpectedFile& sample)
{
    return ParsedLines(sample.expectations / "schema.jsonl");
}

std::vector<Json> ExpectedRows(const ExpectedFile& sample, const std::string& table)
{
    std::vector<Json> rows = ParsedLines(sample.expectations / FileNameOf(table));
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<Json> RowsOf(const jet::table::RowSource& table)
{
    std::vector<Json> rows;
    const auto cursor = table.Scan();
    while (cursor->Next()) {
        rows.push_back(ParseJson(tools::RowJson(table, cursor->Row())));
        SayAsTheOtherReader(rows.back(), table.Definition());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::map<std::string, PageNumber> UserTables(const std::shared_ptr<jet::pages::Pager>& pager)
{
    constexpr PageNumber objectsPage{2};
    const NativeTable objects(pager, objectsPage);
    std::map<std::string, PageNumber> tables;
    const auto rows = objects.Scan();
    while (rows->Next()) {
        if (!IsUserTable(objects, rows->Row())) continue;
        const auto name =
            objects.ValueOf(rows->Row(), objects.Definition().FindColumn("Name").value());
        const auto id = static_cast<std::uint32_t>(LongOf(objects, rows->Row(), "Id"));
        tables[*name.As<std::string>()] = PageNumber{id};
    }
    return tables;
}

}  // namespace tests
