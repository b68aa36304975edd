// SPDX-License-Identifier: Apache-2.0
// Rows written into copies of real files: old shapes, dropped columns, indexes and relationships.
#include "jet/io/MemoryFile.h"
#include "jet/table/NativeTable.h"
#include "tests/support/ExpectedTables.h"
#include "tests/support/ForeignRows.h"
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
        EXPECT_EQ(tests::DifferencesFrom(copy, name, NativeTable(pager_, page)),
                  std::vector<std::string>{});
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
