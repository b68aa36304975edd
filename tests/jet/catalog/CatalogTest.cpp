// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/Catalog.h"

#include "base/NumberedError.h"
#include "jet/catalog/SystemTables.h"
#include "jet/format/PropertyBlock.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using jet::catalog::Catalog;
using jet::catalog::CatalogEntry;
using jet::catalog::NewColumn;
using jet::catalog::NewIndex;
using jet::catalog::NewTable;
using jet::catalog::ObjectKind;
using jet::catalog::ObjectType;
using jet::format::ColumnType;
using jet::format::FileVersion;
using jet::table::NativeTable;

constexpr base::Date kNow{38061.375};  // 2004-03-15 09:00

NewColumn Column(std::string name, ColumnType type, int size = 0)
{
    NewColumn column;
    column.name = std::move(name);
    column.type = type;
    column.size = size;
    return column;
}

NewTable Board()
{
    NewTable table;
    table.name = "Board";
    table.columns = {Column("Entry", ColumnType::Long), Column("WO#", ColumnType::Long),
                     Column("Name", ColumnType::Text, 100), Column("Since", ColumnType::Date),
                     Column("Notes", ColumnType::Memo)};
    table.columns[0].autoNumber = true;
    table.columns[1].properties.defaultValue = "0";
    table.columns[2].properties.allowZeroLength = true;
    NewIndex key;
    key.name = "PrimaryKey";
    key.columns = {{"Entry"}};
    key.primary = true;
    NewIndex byName;
    byName.name = "ByName";
    byName.columns = {{"Name"}, {"Since", false}};
    table.indexes = {key, byName};
    return table;
}

class CatalogTest : public testing::TestWithParam<const FileVersion*> {
protected:
    CatalogTest()
    {
        Catalog::CreateDatabase(files_, "new.mdb", *GetParam());
        pager_ = jet::pages::Pager::Open(files_, "new.mdb", jet::io::OpenMode::ReadWrite);
        catalog_ = std::make_unique<Catalog>(pager_);
    }

    void Reopen()
    {
        catalog_.reset();
        pager_.reset();
        pager_ = jet::pages::Pager::Open(files_, "new.mdb", jet::io::OpenMode::ReadWrite);
        catalog_ = std::make_unique<Catalog>(pager_);
    }

    // An account's id as a new file of this version has it.
    static base::Bytes Account(std::uint8_t first, std::uint8_t second)
    {
        const bool masked = GetParam() == &jet::format::kJet4;
        return {std::byte(first ^ (masked ? 0x67 : 0)), std::byte(second ^ (masked ? 0x8A : 0))};
    }

    int NumberOfCreate(const NewTable& table)
    {
        return tests::ErrorOf([&] { catalog_->Create(table, kNow); });
    }

    // A catalog row for an object that is no table of this file.
    void AddObject(const char* name, ObjectType type)
    {
        jet::pages::WriteSet changes(*pager_);
        NativeTable objects(pager_, jet::catalog::kObjectsPage);
        jet::catalog::InsertObject(changes, objects,
                                   {.id = static_cast<std::int32_t>(0x80000000 + nextId_++),
                                    .parent = jet::catalog::kTablesContainer,
                                    .name = name,
                                    .type = type,
                                    .flags = 0,
                                    .owner = jet::catalog::OwnerOfDatabase(objects),
                                    .created = kNow,
                                    .properties = {}});
        changes.Commit();
    }

    jet::io::MemoryFileSystem files_;
    std::shared_ptr<jet::pages::Pager> pager_;
    std::unique_ptr<Catalog> catalog_;
    std::uint32_t nextId_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Versions, CatalogTest,
                         testing::Values(&jet::format::kJet3, &jet::format::kJet4),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param->name[0]);
                         });

TEST_P(CatalogTest, CreatedTableIsThereWhenTheFileIsOpenedAgain)
{
    catalog_->Create(Board(), kNow);
    Reopen();
    const auto table = catalog_->Open("Board");
    const auto& definition = table.rows->Definition();
    ASSERT_EQ(definition.columns.size(), 5U);
    EXPECT_EQ(definition.columns[1].name, "WO#");
    EXPECT_EQ(definition.columns[2].type, ColumnType::Text);
    EXPECT_EQ(definition.columns[2].length, 100 * GetParam()->bytesPerCharacter);
    EXPECT_TRUE(definition.columns[0].autoNumber);
    EXPECT_EQ(definition.namedIndexes.size(), 2U);
    EXPECT_EQ(table.rows->RowCount(), 0U);
    EXPECT_FALSE(table.entry.system);
    EXPECT_SPOTLESS(files_, "new.mdb");
}

TEST_P(CatalogTest, NamesAreFoundWithoutRegardToCase)
{
    NewTable table = Board();
    table.name = "Größe";
    catalog_->Create(table, kNow);
    EXPECT_EQ(catalog_->Find("GRÖSSE").value_or(CatalogEntry{}).name, "Größe");
    EXPECT_EQ(catalog_->Find("grÖße").value_or(CatalogEntry{}).name, "Größe");
    EXPECT_FALSE(catalog_->Find("Grosse").has_value());
    EXPECT_EQ(NumberOfCreate(table), 3010);
}

TEST_P(CatalogTest, PropertiesComeBackAndOnlyThoseThatWereSet)
{
    catalog_->Create(Board(), kNow);
    const auto table = catalog_->Open("board");
    EXPECT_EQ(table.properties[1].defaultValue, "0");
    EXPECT_FALSE(table.properties[1].allowZeroLength);
    EXPECT_TRUE(table.properties[2].allowZeroLength);
    EXPECT_EQ(table.properties[0], jet::catalog::FieldProperties{});
    EXPECT_EQ(table.properties[4], jet::catalog::FieldProperties{});
}

TEST_P(CatalogTest, CatalogRowIsThatOfAnOrdinaryTable)
{
    catalog_->Create(Board(), kNow);
    const auto board = catalog_->Open("Board");
    const auto objects = catalog_->Open("MSysObjects");
    const auto& definition = objects.rows->Definition();
    const auto rows = objects.rows->Scan();
    int found = 0;
    while (rows->Next()) {
        const auto value = [&](const char* column) {
            return objects.rows->ValueOf(rows->Row(), definition.FindColumn(column).value());
        };
        if (!(value("Name") == base::Value("Board"))) continue;
        ++found;
        EXPECT_EQ(value("Id"), base::Value(board.entry.id));
        EXPECT_EQ(value("ParentId"), base::Value(jet::catalog::kTablesContainer));
        EXPECT_EQ(value("Type"), base::Value(std::int16_t{1}));
        EXPECT_EQ(value("Flags"), base::Value(std::int32_t{0}));
        EXPECT_EQ(value("DateCreate"), base::Value(kNow));
        EXPECT_EQ(value("DateUpdate"), base::Value(kNow));
        EXPECT_EQ(value("Owner"), base::Value(Account(0x03, 0x01)));
        for (const char* empty : {"Database", "Connect", "ForeignName", "RmtInfoShort",
                                  "RmtInfoLong", "Lv", "LvModule", "LvExtra"})
            EXPECT_TRUE(value(empty).IsNull()) << empty;
    }
    EXPECT_EQ(found, 1);
}

TEST_P(CatalogTest, TableWithoutSettingsHasNoPropertyBlock)
{
    NewTable plain;
    plain.name = "Plain";
    plain.columns = {Column("A", ColumnType::Long)};
    catalog_->Create(plain, kNow);
    const auto objects = catalog_->Open("MSysObjects");
    const auto& definition = objects.rows->Definition();
    const auto rows = objects.rows->Scan();
    while (rows->Next())
        EXPECT_TRUE(
            objects.rows->ValueOf(rows->Row(), definition.FindColumn("LvProp").value()).IsNull());
}

TEST_P(CatalogTest, RightsAreTakenOverFromTheContainer)
{
    catalog_->Create(Board(), kNow);
    const std::int32_t id = catalog_->Open("Board").entry.id;
    const auto rights = catalog_->Open("MSysACEs");
    const auto& definition = rights.rows->Definition();
    std::vector<std::pair<base::Value, base::Value>> given;  // account, rights
    const auto rows = rights.rows->Scan();
    while (rows->Next()) {
        const auto value = [&](const char* column) {
            return rights.rows->ValueOf(rows->Row(), definition.FindColumn(column).value());
        };
        if (!(value("ObjectId") == base::Value(id))) continue;
        EXPECT_EQ(value("FInheritable"), base::Value(false));
        given.emplace_back(value("SID"), value("ACM"));
    }
    ASSERT_EQ(given.size(), 2U);
    EXPECT_EQ(given[0].first, base::Value(Account(0x03, 0x01)));
    EXPECT_EQ(given[0].second, base::Value(std::int32_t{0xF00FE}));
    EXPECT_EQ(given[1].first, base::Value(Account(0x02, 0x01)));
    EXPECT_EQ(given[1].second, base::Value(std::int32_t{0xFFEFF}));
}

TEST_P(CatalogTest, RowsGoIntoACreatedTable)
{
    catalog_->Create(Board(), kNow);
    const auto table = catalog_->Open("Board");
    for (int i = 0; i < 300; ++i)
        (void)table.rows->Insert(
            std::vector<jet::table::Assignment>{{0, table.rows->NextAutoNumber()},
                                                {2, "O'Brien, Zoë " + std::to_string(i % 7)},
                                                {4, std::string(900, 'x')}});
    EXPECT_EQ(table.rows->RowCount(), 300U);
    EXPECT_EQ(table.rows->NextAutoNumber(), 301);
    EXPECT_SPOTLESS(files_, "new.mdb");
}

TEST_P(CatalogTest, TableOfEveryTypeIsReadAsItWasWished)
{
    NewTable table;
    table.name = "Everything";
    using enum ColumnType;
    for (const ColumnType type : {Boolean, Byte, Integer, Long, Currency, Single, Double, Date,
                                  Binary, Text, Ole, Memo, Guid, Numeric})
        if (static_cast<std::uint8_t>(type) <= GetParam()->lastColumnType)
            table.columns.push_back(
                Column("Type " + std::to_string(static_cast<int>(type)), type, 0));
    table.columns.back().precision = 12;
    table.columns.back().scale = 3;
    catalog_->Create(table, kNow);
    Reopen();
    const auto opened = catalog_->Open("Everything");
    const auto& columns = opened.rows->Definition().columns;
    ASSERT_EQ(columns.size(), table.columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        EXPECT_EQ(columns[i].type, table.columns[i].type);
    if (columns.back().type == Numeric) {
        EXPECT_EQ(columns.back().precision, 12);
        EXPECT_EQ(columns.back().scale, 3);
    }
    EXPECT_TRUE(columns[10].ownedPages.has_value());
    EXPECT_SPOTLESS(files_, "new.mdb");
}

TEST_P(CatalogTest, LargestTableTakesSeveralPagesOfDefinitionAndMaps)
{
    NewTable table;
    table.name = "Largest";
    for (int i = 0; i < 255; ++i) {
        const std::string number = std::to_string(i);
        table.columns.push_back(Column(std::string(64 - number.size(), 'n') + number,
                                       i % 2 == 0 ? ColumnType::Memo : ColumnType::Long));
    }
    for (int i = 0; i < 32; ++i) {
        NewIndex index;
        index.name = "Index" + std::to_string(i);
        index.columns = {{table.columns[static_cast<std::size_t>(2 * i + 1)].name}};
        table.indexes.push_back(index);
    }
    catalog_->Create(table, kNow);
    Reopen();
    const auto opened = catalog_->Open("Largest");
    const auto& definition = opened.rows->Definition();
    EXPECT_GT(definition.pages.size(), 10U);
    EXPECT_EQ(definition.columns.size(), 255U);
    EXPECT_EQ(definition.columns[254].name, table.columns[254].name);
    EXPECT_EQ(definition.indexes.size(), 32U);
    (void)opened.rows->Insert(
        std::vector<jet::table::Assignment>{{0, std::string(5000, 'm')}, {1, std::int32_t{7}}});
    EXPECT_SPOTLESS(files_, "new.mdb");
}

TEST_P(CatalogTest, TakenNamesAreRefusedAndNothingIsWritten)
{
    catalog_->Create(Board(), kNow);
    AddObject("A query", ObjectType::Query);
    AddObject("A link", ObjectType::LinkedTable);
    const auto before = files_.Content("new.mdb");
    NewTable table = Board();
    table.name = "BOARD";
    EXPECT_EQ(NumberOfCreate(table), 3010);
    table.name = "a query";
    EXPECT_EQ(NumberOfCreate(table), 3012);
    table.name = "a link";
    EXPECT_EQ(NumberOfCreate(table), 3010);
    table.name = "MSysObjects";
    EXPECT_EQ(NumberOfCreate(table), 3010);
    // A container's name is not one of a table.
    EXPECT_EQ(files_.Content("new.mdb"), before);
    table.name = "Tables";
    EXPECT_EQ(NumberOfCreate(table), 0);
}

TEST_P(CatalogTest, LinksAndQueriesAreKnownAndNotOpened)
{
    AddObject("A query", ObjectType::Query);
    AddObject("A link", ObjectType::LinkedTable);
    EXPECT_EQ(catalog_->Find("A query").value_or(CatalogEntry{}).kind, ObjectKind::Query);
    EXPECT_EQ(catalog_->Find("A link").value_or(CatalogEntry{}).kind, ObjectKind::LinkedTable);
    for (const char* name : {"A query", "A link", "Nothing"}) {
        try {
            (void)catalog_->Open(name);
            FAIL() << name;
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), 3078) << name;
        }
    }
}

TEST_P(CatalogTest, BadWishesLeaveTheFileAlone)
{
    const auto before = files_.Content("new.mdb");
    NewTable table = Board();
    table.columns.push_back(Column("entry", ColumnType::Long));
    EXPECT_EQ(NumberOfCreate(table), 3191);
    table = Board();
    table.name = "no.good";
    EXPECT_EQ(NumberOfCreate(table), 3125);
    EXPECT_EQ(files_.Content("new.mdb"), before);
}

}  // namespace
