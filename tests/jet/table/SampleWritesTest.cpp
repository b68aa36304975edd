// SPDX-License-Identifier: Apache-2.0
// Rows written into copies of real files: old shapes, dropped columns, indexes and relationships.
#include "jet/io/MemoryFile.h"
#include "jet/table/NativeTable.h"
#include "tests/support/ExpectedTables.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"
#include "tools/RowJson.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace {

using base::Value;
using jet::format::ColumnType;
using jet::format::RowId;
using jet::table::Assignment;
using jet::table::NativeTable;
using tests::ExpectedFile;
using tests::Json;

std::vector<std::byte> BytesOf(const std::filesystem::path& file)
{
    std::vector<std::byte> bytes(std::filesystem::file_size(file));
    std::ifstream in(file, std::ios::binary);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(in.get());
    return bytes;
}

class SampleWritesTest : public testing::TestWithParam<ExpectedFile> {
protected:
    void SetUp() override
    {
        SKIP_WITHOUT_SAMPLE(GetParam().file);
        // In memory, so that no change waits for the disk.
        static_cast<void>(files_.Create(file_));
        files_.Content(file_) = BytesOf(GetParam().file);
        pager_ = jet::pages::Pager::Open(files_, file_, jet::io::OpenMode::ReadWrite);
        tables_ = tests::UserTables(pager_);
    }

    jet::io::MemoryFileSystem files_;
    const std::string file_ = "sample.mdb";
    std::shared_ptr<jet::pages::Pager> pager_;
    std::map<std::string, jet::format::PageNumber> tables_;
};

std::vector<Assignment> Values(const NativeTable& table, const jet::format::RowView& row)
{
    std::vector<Assignment> values;
    for (std::size_t column = 0; column < table.Definition().columns.size(); ++column)
        values.push_back({column, table.ValueOf(row, column)});
    return values;
}

// The first rows of a table.
std::vector<RowId> RowIds(const NativeTable& table, std::size_t most)
{
    std::vector<RowId> ids;
    for (const auto rows = table.Scan(); ids.size() < most && rows->Next();)
        ids.push_back(rows->Id());
    return ids;
}

// Texts and memos that no index covers may be rewritten at will.
bool IsFreeText(const NativeTable& table, std::size_t column)
{
    const auto& definition = table.Definition();
    const auto& found = definition.columns[column];
    const auto covers = [&found](const jet::format::IndexDefinition& index) {
        return std::any_of(index.columns.begin(), index.columns.end(), [&found](const auto& part) {
            return part.columnNumber == found.number;
        });
    };
    return (found.type == ColumnType::Text || found.type == ColumnType::Memo) && !found.fixed &&
           std::none_of(definition.indexes.begin(), definition.indexes.end(), covers);
}

std::string LongText(const NativeTable& table, std::size_t column)
{
    const auto& definition = table.Definition().columns[column];
    // Not every row of a wide table can hold all its texts at full length.
    const std::size_t share = 1500 / table.Definition().columns.size();
    const std::size_t length = definition.type == ColumnType::Memo
                                   ? std::size_t{6000}
                                   : std::min<std::size_t>(definition.length / 2, share);
    return std::string(length, 'w');
}

TEST_P(SampleWritesTest, RowsDeletedAndEnteredAgainAreTheSameRows)
{
    for (const Json& expected : tests::ExpectedSchema(GetParam())) {
        const std::string name = expected["table"].Text();
        SCOPED_TRACE(name);
        NativeTable table(pager_, tables_.at(name));
        const std::vector<RowId> ids = RowIds(table, 60);
        for (std::size_t i = 0; i < ids.size(); i += 2) {
            const auto row = table.Fetch(ids[i]).value();
            const auto values = Values(table, table.View(row));
            table.Delete(ids[i]);
            const RowId again = table.Insert(values);
            EXPECT_GT(again, ids.back());
        }
        EXPECT_TRUE(tests::RowsOf(table) == tests::ExpectedRows(GetParam(), name));
        EXPECT_EQ(table.RowCount(), expected["rows"].Number());
    }
    EXPECT_CLEAN(files_, file_);
}

// A row's values before its texts grew.
struct FormerRow {
    RowId id;
    std::vector<Assignment> values;
};

std::vector<FormerRow> GrowTexts(NativeTable& table)
{
    std::vector<FormerRow> former;
    for (const RowId id : RowIds(table, 25)) {
        former.push_back({id, Values(table, table.View(table.Fetch(id).value()))});
        for (const Assignment& value : former.back().values) {
            if (!IsFreeText(table, value.column)) continue;
            const std::vector<Assignment> grown{{value.column, LongText(table, value.column)}};
            table.Update(id, grown);
            const auto after = table.Fetch(id).value();
            EXPECT_EQ(table.ValueOf(table.View(after), value.column), grown[0].value);
        }
    }
    return former;
}

TEST_P(SampleWritesTest, TextsThatGrewAndShrankBackAreAsBefore)
{
    std::map<std::string, std::vector<FormerRow>> former;
    for (const auto& [name, page] : tables_) {
        NativeTable table(pager_, page);
        former[name] = GrowTexts(table);
    }
    EXPECT_CLEAN(files_, file_);
    for (const auto& [name, page] : tables_) {
        SCOPED_TRACE(name);
        NativeTable table(pager_, page);
        for (const FormerRow& row : former[name])
            table.Update(row.id, row.values);
        EXPECT_TRUE(tests::RowsOf(table) == tests::ExpectedRows(GetParam(), name));
    }
    EXPECT_CLEAN(files_, file_);
}

// The rows of a table as the command mdb-json prints them.
std::vector<Json> ForeignRows(const std::string& file, const std::string& table)
{
    const std::string command =
        "mdb-json -D %Y-%m-%dT%H:%M:%S -T %Y-%m-%dT%H:%M:%S '" + file + "' '" + table + "'";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe) throw std::runtime_error("mdb-json does not start");
    std::string output;
    std::array<char, 4096> part{};
    while (const std::size_t length = std::fread(part.data(), 1, part.size(), pipe.get()))
        output.append(part.data(), length);
    std::vector<Json> rows;
    for (std::size_t begin = 0, end = 0; (end = output.find('\n', begin)) != std::string::npos;
         begin = end + 1)
        rows.push_back(tests::ParseJson(output.substr(begin, end - begin)));
    return rows;
}

// The other reader asks where a code page has a code without a character; we keep the code.
Value WithoutUnassigned(const Value& value, const jet::format::ColumnDefinition& column)
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
bool Agree(ColumnType type, const Value& value, const tests::JsonObject& row,
           const std::string& name)
{
    const auto found = row.find(name);
    const std::string* text = value.As<std::string>();
    if (value.IsNull() || (text != nullptr && text->empty())) return found == row.end();
    if (type == ColumnType::Boolean)
        return found->second.Number() == (*value.As<bool>() ? 1.0 : 0.0);
    return found != row.end() && found->second == tests::ParseJson(tools::ValueJson(value));
}

bool IsComparable(ColumnType type)
{
    return type == ColumnType::Boolean || type == ColumnType::Byte || type == ColumnType::Integer ||
           type == ColumnType::Long || type == ColumnType::Text || type == ColumnType::Memo;
}

TEST_P(SampleWritesTest, IndependentReaderFindsTheRowsWeWrote)
{
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    for (const auto& [name, page] : tables_) {
        SCOPED_TRACE(name);
        NativeTable table(pager_, page);
        for (const RowId id : RowIds(table, 20)) {
            const auto row = table.Fetch(id).value();
            auto values = Values(table, table.View(row));
            for (Assignment& assignment : values)
                if (IsFreeText(table, assignment.column))
                    assignment.value = LongText(table, assignment.column);
            table.Delete(id);
            table.Insert(values);
        }
    }
    const tests::ScratchFolder folder;
    const std::string copy = (folder.Path() / "sample.mdb").string();
    std::ofstream out(copy, std::ios::binary);
    for (const std::byte byte : files_.Content(file_))
        out.put(static_cast<char>(byte));
    out.close();
    for (const auto& [name, page] : tables_) {
        SCOPED_TRACE(name);
        const NativeTable table(pager_, page);
        const std::vector<Json> foreign = ForeignRows(copy, name);
        std::size_t place = 0;
        for (const auto rows = table.Scan(); rows->Next(); ++place) {
            ASSERT_LT(place, foreign.size());
            const auto& found = std::get<tests::JsonObject>(foreign[place].content);
            for (std::size_t column = 0; column < table.Definition().columns.size(); ++column) {
                const auto& definition = table.Definition().columns[column];
                if (!IsComparable(definition.type)) continue;
                const Value value =
                    WithoutUnassigned(table.ValueOf(rows->Row(), column), definition);
                EXPECT_TRUE(Agree(definition.type, value, found, definition.name))
                    << definition.name;
            }
        }
        EXPECT_EQ(place, foreign.size());
    }
}

std::string NameOf(const testing::TestParamInfo<ExpectedFile>& info)
{
    std::string name = info.param.expectations.filename().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, SampleWritesTest, testing::ValuesIn(tests::ExpectedFiles()),
                         NameOf);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleWritesTest);

}  // namespace
