// SPDX-License-Identifier: Apache-2.0
// Real files read whole: every row and every definition as another reader found them.
#include "jet/io/StdFile.h"
#include "jet/table/NativeTable.h"
#include "tests/support/ExpectedTables.h"
#include "tests/support/Samples.h"

#include <gtest/gtest.h>

namespace {

using jet::format::ColumnDefinition;
using jet::format::ColumnType;
using jet::format::IndexDefinition;
using jet::format::NamedIndex;
using jet::format::TableDefinition;
using jet::table::NativeTable;
using tests::ExpectedFile;
using tests::Json;

class SampleTablesTest : public testing::TestWithParam<ExpectedFile> {
protected:
    void SetUp() override
    {
        SKIP_WITHOUT_SAMPLE(GetParam().file);
        pager_ =
            jet::pages::Pager::Open(files_, GetParam().file.string(), jet::io::OpenMode::ReadOnly);
        tables_ = tests::UserTables(pager_);
    }

    jet::io::StdFileSystem files_;
    std::shared_ptr<jet::pages::Pager> pager_;
    std::map<std::string, jet::format::PageNumber> tables_;
};

std::string TypeName(ColumnType type)
{
    switch (type) {
    case ColumnType::Boolean:
        return "BOOLEAN";
    case ColumnType::Byte:
        return "BYTE";
    case ColumnType::Integer:
        return "INT";
    case ColumnType::Long:
        return "LONG";
    case ColumnType::Currency:
        return "MONEY";
    case ColumnType::Single:
        return "FLOAT";
    case ColumnType::Double:
        return "DOUBLE";
    case ColumnType::Date:
        return "SHORT_DATE_TIME";
    case ColumnType::Binary:
        return "BINARY";
    case ColumnType::Text:
        return "TEXT";
    case ColumnType::Ole:
        return "OLE";
    case ColumnType::Memo:
        return "MEMO";
    case ColumnType::Guid:
        return "GUID";
    case ColumnType::Numeric:
        return "NUMERIC";
    }
    return "?";
}

void ExpectColumn(const ColumnDefinition& column, const Json& expected)
{
    const int bytesPerUnit = column.type == ColumnType::Text && column.codePage == 0 ? 2 : 1;
    EXPECT_EQ(column.name, expected["name"].Text());
    EXPECT_EQ(TypeName(column.type), expected["type"].Text()) << column.name;
    EXPECT_EQ(column.length / bytesPerUnit, expected["length"].Number()) << column.name;
}

Json ColumnsOf(const IndexDefinition& index, const TableDefinition& table)
{
    tests::JsonArray names;
    for (const auto& part : index.columns) {
        const std::string name = table.columns[table.FindNumber(part.columnNumber).value()].name;
        names.push_back({(part.ascending ? "+" : "-") + name});
    }
    return {names};
}

void ExpectIndex(const NamedIndex& index, const TableDefinition& table, const Json& expected)
{
    const IndexDefinition& tree = table.indexes[index.tree];
    EXPECT_EQ(Json{index.kind == 1}, expected["primary"]) << index.name;
    EXPECT_EQ(Json{tree.unique}, expected["unique"]) << index.name;
    EXPECT_EQ(ColumnsOf(tree, table), expected["columns"]) << index.name;
}

void ExpectDefinition(const TableDefinition& table, const Json& expected)
{
    const auto& columns = expected["columns"].Items();
    ASSERT_EQ(table.columns.size(), columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        ExpectColumn(table.columns[i], columns[i]);
    for (const Json& index : expected["indexes"].Items()) {
        const auto found = std::find_if(
            table.namedIndexes.begin(), table.namedIndexes.end(),
            [&index](const NamedIndex& named) { return named.name == index["name"].Text(); });
        ASSERT_NE(found, table.namedIndexes.end()) << index["name"].Text();
        ExpectIndex(*found, table, index);
    }
}

TEST_P(SampleTablesTest, EveryRowReadsAsExpected)
{
    for (const Json& expected : tests::ExpectedSchema(GetParam())) {
        const std::string name = expected["table"].Text();
        SCOPED_TRACE(name);
        ASSERT_TRUE(tables_.contains(name));
        const NativeTable table(pager_, tables_[name]);
        const std::vector<Json> rows = tests::RowsOf(table);
        EXPECT_EQ(rows.size(), expected["rows"].Number());
        EXPECT_TRUE(rows == tests::ExpectedRows(GetParam(), name));
    }
}

TEST_P(SampleTablesTest, EveryDefinitionReadsAsExpected)
{
    for (const Json& expected : tests::ExpectedSchema(GetParam())) {
        SCOPED_TRACE(expected["table"].Text());
        const NativeTable table(pager_, tables_.at(expected["table"].Text()));
        ExpectDefinition(table.Definition(), expected);
    }
}

TEST_P(SampleTablesTest, RowsFetchedByIdAreThoseOfTheScan)
{
    for (const auto& [name, page] : tables_) {
        const NativeTable table(pager_, page);
        std::uint32_t count = 0;
        for (const auto rows = table.Scan(); rows->Next(); ++count) {
            const auto row = table.Fetch(rows->Id());
            ASSERT_TRUE(row.has_value());
            const auto bytes = rows->Row().Bytes();
            EXPECT_TRUE(
                std::equal(bytes.begin(), bytes.end(), row->bytes.begin(), row->bytes.end()));
        }
        EXPECT_EQ(count, table.RowCount()) << name;
    }
}

std::string NameOf(const testing::TestParamInfo<ExpectedFile>& info)
{
    std::string name = info.param.expectations.filename().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, SampleTablesTest, testing::ValuesIn(tests::ExpectedFiles()),
                         NameOf);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleTablesTest);

}  // namespace
