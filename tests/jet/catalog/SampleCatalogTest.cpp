// SPDX-License-Identifier: Apache-2.0
// What the engine itself wrote into real files: we read it, and would have written the same.
#include "base/NumberedError.h"
#include "jet/catalog/Catalog.h"
#include "jet/format/PropertyBlock.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/TableDefinitionWriter.h"
#include "jet/io/MemoryFile.h"
#include "jet/io/StdFile.h"
#include "jet/table/DefinitionPages.h"
#include "tests/support/ExpectedTables.h"
#include "tests/support/Hex.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

namespace {

using jet::catalog::Catalog;
using jet::catalog::CatalogEntry;
using jet::catalog::ObjectKind;
using jet::format::ColumnDefinition;
using jet::format::DefinitionLayout;
using jet::format::kLongValueMap;
using jet::format::TableDefinition;
using Bytes = std::vector<std::byte>;

class SampleCatalogTest : public testing::Test {
protected:
    void SetUp() override { SKIP_WITHOUT_SAMPLE(tests::SampleFolder()); }

    std::shared_ptr<jet::pages::Pager> Open(const tests::ExpectedFile& sample)
    {
        return jet::pages::Pager::Open(files_, sample.file.string(), jet::io::OpenMode::ReadOnly);
    }

    jet::io::StdFileSystem files_;
};

// The columns as they stand in the file, not in field order.
void StandAsStored(TableDefinition& table, const Bytes& joined, const DefinitionLayout& layout)
{
    const std::size_t from =
        layout.table.statistics + layout.table.statisticsSize * table.indexes.size();
    std::vector<ColumnDefinition> stored;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const auto number =
            jet::format::ReadU16(joined, from + i * layout.column.size + layout.column.number);
        stored.push_back(*std::find_if(table.columns.begin(), table.columns.end(),
                                       [&](const auto& c) { return c.number == number; }));
    }
    table.columns = std::move(stored);
}

void Blank(Bytes& bytes, std::size_t from, std::size_t count)
{
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(from), count, std::byte{0});
}

// Overwrites what the format leaves undefined, and the counts of index entries.
void BlankUndefined(Bytes& joined, const TableDefinition& table, const DefinitionLayout& layout)
{
    Blank(joined, 2, 6);  // free bytes and successor of the first page
    if (layout.table.increment != jet::format::kAbsent)
        Blank(joined, layout.table.increment + 4, 12);  // behind the counter's increment
    std::size_t at = layout.table.statistics;
    Blank(joined, at, layout.table.statisticsSize * table.indexes.size());
    at += layout.table.statisticsSize * table.indexes.size();
    for (const ColumnDefinition& column : table.columns) {
        if (!column.fixed) Blank(joined, at + layout.column.fixedOffset, 2);
        at += layout.column.size;
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        at += layout.nameLength + jet::format::ReadNumber(joined, at, layout.nameLength);
    for (const auto& index : table.indexes) {
        for (std::size_t i = index.columns.size(); i < layout.index.columnPlaces; ++i)
            Blank(joined, at + layout.index.columns + layout.index.columnSize * i + 2, 1);
        // Between the root and the flags.
        Blank(joined, at + layout.index.root + 4, layout.index.flags - layout.index.root - 4);
        at += layout.index.size;
    }
}

// The list of long-value maps, which stands in any order, put into one.
void SortLongValueMaps(Bytes& joined, const TableDefinition& table)
{
    std::vector<std::string> maps;
    const auto longValues = static_cast<std::size_t>(
        std::count_if(table.columns.begin(), table.columns.end(),
                      [](const auto& column) { return column.ownedPages.has_value(); }));
    const std::size_t from = joined.size() - 2 - kLongValueMap.size * longValues;
    for (std::size_t i = 0; i < longValues; ++i)
        maps.push_back(tests::ToHex(
            std::span(joined).subspan(from + kLongValueMap.size * i, kLongValueMap.size)));
    std::sort(maps.begin(), maps.end());
    for (std::size_t i = 0; i < longValues; ++i) {
        const Bytes map = tests::FromHex(maps[i]);
        std::copy(map.begin(), map.end(),
                  joined.begin() + static_cast<std::ptrdiff_t>(from + kLongValueMap.size * i));
    }
}

TEST_F(SampleCatalogTest, DefinitionsWouldHaveBeenWrittenAsTheyStand)
{
    int compared = 0;
    for (const tests::ExpectedFile& sample : tests::ExpectedFiles()) {
        const auto pager = Open(sample);
        for (const CatalogEntry& entry : Catalog(pager).Entries()) {
            if (entry.kind != ObjectKind::LocalTable) continue;
            const jet::format::PageNumber page{static_cast<std::uint32_t>(entry.id)};
            Bytes stored = jet::table::JoinDefinition(*pager, page).bytes;
            stored.resize(jet::format::ReadU32(stored, jet::format::kDefinitionLength));
            TableDefinition table = jet::table::LoadDefinition(*pager, page);
            const DefinitionLayout& layout = *pager->Version().definition;
            StandAsStored(table, stored, layout);
            const jet::format::TableDefinitionWriter writer(table, pager->Version());
            Bytes written(writer.Joined().begin(), writer.Joined().end());
            for (Bytes* bytes : {&stored, &written}) {
                BlankUndefined(*bytes, table, layout);
                SortLongValueMaps(*bytes, table);
            }
            EXPECT_EQ(tests::ToHex(written), tests::ToHex(stored))
                << sample.file << " " << entry.name;
            ++compared;
        }
    }
    EXPECT_GT(compared, 100);
}

TEST_F(SampleCatalogTest, PropertyBlocksAreWrittenAgainByteForByte)
{
    int compared = 0;
    for (const tests::ExpectedFile& sample : tests::ExpectedFiles()) {
        const auto objects = Catalog(Open(sample)).Open("MSysObjects");
        const std::size_t column = objects.rows->Definition().FindColumn("LvProp").value();
        const auto rows = objects.rows->Scan();
        while (rows->Next()) {
            const base::Value value = objects.rows->ValueOf(rows->Row(), column);
            if (value.IsNull()) continue;
            const auto& bytes = *value.As<base::Bytes>();
            EXPECT_EQ(tests::ToHex(jet::format::PropertyBlock::Parse(bytes).Encode()),
                      tests::ToHex(bytes))
                << sample.file;
            ++compared;
        }
    }
    EXPECT_GT(compared, 60);
}

TEST_F(SampleCatalogTest, ATableIsMadeInEachOfThemAndTheFileStaysSound)
{
    jet::catalog::NewTable wish;
    wish.name = "Made here";
    wish.columns.resize(2);
    wish.columns[0].name = "ID";
    wish.columns[1].name = "Text";
    wish.columns[1].type = jet::format::ColumnType::Text;
    wish.columns[0].autoNumber = true;
    wish.columns[1].properties.allowZeroLength = true;
    wish.indexes = {{.name = "PrimaryKey", .columns = {{.column = "ID"}}, .primary = true}};
    for (const tests::ExpectedFile& sample : tests::ExpectedFiles()) {
        jet::io::MemoryFileSystem memory;
        (void)memory.Create("copy.mdb");
        std::ifstream stream(sample.file, std::ios::binary);
        const std::string content((std::istreambuf_iterator<char>(stream)),
                                  std::istreambuf_iterator<char>());
        const auto bytes = std::as_bytes(std::span(content));
        memory.Content("copy.mdb").assign(bytes.begin(), bytes.end());
        {
            Catalog catalog(
                jet::pages::Pager::Open(memory, "copy.mdb", jet::io::OpenMode::ReadWrite));
            catalog.Create(wish, {38061});
            const auto table = catalog.Open("made HERE");
            (void)table.rows->Insert(std::vector<jet::table::Assignment>{
                {0, table.rows->NextAutoNumber()}, {1, "first"}});
            EXPECT_EQ(table.rows->RowCount(), 1U);
        }
        EXPECT_CLEAN(memory, "copy.mdb") << sample.file;
    }
}

TEST_F(SampleCatalogTest, QueriesAreToldFromTables)
{
    const auto path = tests::SampleFolder() / "mdb" / "queryTestV2000.mdb";
    SKIP_WITHOUT_SAMPLE(path);
    const Catalog catalog(
        jet::pages::Pager::Open(files_, path.string(), jet::io::OpenMode::ReadOnly));
    const auto entries = catalog.Entries();
    const auto count = [&](ObjectKind kind) {
        return std::count_if(entries.begin(), entries.end(), [&](const CatalogEntry& entry) {
            return entry.kind == kind && !entry.system;
        });
    };
    EXPECT_EQ(count(ObjectKind::LocalTable), 3);
    EXPECT_GT(count(ObjectKind::Query), 5);
    EXPECT_EQ(catalog.Find("TABLE1").value_or(CatalogEntry{}).kind, ObjectKind::LocalTable);
}

TEST_F(SampleCatalogTest, PropertiesOfRealFieldsAreRead)
{
    const auto path = tests::SampleFolder() / "mdb" / "testV2000.mdb";
    SKIP_WITHOUT_SAMPLE(path);
    const Catalog catalog(
        jet::pages::Pager::Open(files_, path.string(), jet::io::OpenMode::ReadOnly));
    const auto table = catalog.Open("Table1");
    const auto place = [&](const char* name) {
        return table.rows->Definition().FindColumn(name).value();
    };
    EXPECT_FALSE(table.properties[place("A")].allowZeroLength);
    EXPECT_FALSE(table.properties[place("A")].required);
    EXPECT_EQ(table.properties[place("C")].defaultValue, "0");
    EXPECT_TRUE(catalog.Open("Table2").properties[0].allowZeroLength);
}

}  // namespace
