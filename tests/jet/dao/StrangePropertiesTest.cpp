// SPDX-License-Identifier: Apache-2.0
// StrangePropertiesTest: tables whose properties have parts that nobody here knows, or damaged
// ones.
#include "jet/catalog/SystemTables.h"
#include "jet/pages/Pager.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/Hex.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace dao {
namespace {

using base::Value;
using jet::format::PageNumber;
using Bytes = std::vector<std::byte>;

class StrangePropertiesTest : public DaoKindTest {
protected:
    StrangePropertiesTest()
    {
        TableDef table("Labor");
        FieldDef hours = TableDef::CreateField("Hrs", FieldType::Double);
        hours.validationRule = ">0";
        hours.defaultValue = "8";
        table.Append(hours);
        table.Append(TableDef::CreateField("Note", FieldType::Text, 20));
        table.Append(IndexDef{.name = "Hrs", .fields = {{.field = "Hrs"}}});
        database.Append(table);
        MakeEmployees();
        database.Execute("INSERT INTO Labor (Hrs) VALUES (4)", kFailOnError);
    }

    // The properties of Labor as the catalog keeps them, which `change` may change.
    void ChangeStored(const std::function<void(Bytes&)>& change)
    {
        database.Close();
        const auto pager = jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadWrite);
        jet::table::NativeTable objects(pager, jet::catalog::kObjectsPage);
        const std::size_t name = jet::catalog::PlaceOf(objects, "Name");
        const std::size_t properties = jet::catalog::PlaceOf(objects, "LvProp");
        const auto rows = objects.Scan();
        while (rows->Next()) {
            if (objects.ValueOf(rows->Row(), name) != Value("Labor")) continue;
            Bytes stored = *objects.ValueOf(rows->Row(), properties).As<base::Bytes>();
            change(stored);
            const jet::table::Assignment assignment{properties, stored};
            objects.Update(rows->Id(), {&assignment, 1});
            break;
        }
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
    }

    // Where these bytes lie, which lie in one place.
    static std::pair<PageNumber, std::size_t> PlaceOf(const jet::pages::Pager& pager,
                                                      const Bytes& wanted)
    {
        for (std::uint32_t page = 0; page < pager.PageCount(); ++page) {
            const jet::pages::Page stored = pager.Read(PageNumber{page});
            const jet::format::Span bytes = stored.Bytes();
            const auto found =
                std::search(bytes.begin(), bytes.end(), wanted.begin(), wanted.end());
            if (found != bytes.end())
                return {PageNumber{page}, static_cast<std::size_t>(found - bytes.begin())};
        }
        throw std::logic_error("the block is in no page");
    }

    Bytes Stored()
    {
        Bytes found;
        ChangeStored([&](const Bytes& stored) { found = stored; });
        return found;
    }
};
INSTANTIATE_TEST_SUITE_P(Kinds, StrangePropertiesTest,
                         testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(StrangePropertiesTest, PartsOfUnknownKindsChangeNothing)
{
    const Bytes strange = tests::FromHex("0a000000 0300 cafebabe 06000000 0200");
    ChangeStored(
        [&](Bytes& stored) { stored.insert(stored.end(), strange.begin(), strange.end()); });
    Recordset rows = Open("Labor");
    rows.AddNew();
    EXPECT_EQ(rows["Hrs"].Value(), Value(8.0));
    rows.Update();
    rows.AddNew();
    rows["Hrs"] = -1.0;
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3317);
    rows.CancelUpdate();
    EXPECT_EQ(database.TableDef("Labor").Fields()[0].validationRule, ">0");
    const Bytes stored = Stored();
    EXPECT_TRUE(std::equal(strange.rbegin(), strange.rend(), stored.rbegin()));
}

TEST_P(StrangePropertiesTest, PartsOfUnknownKindsStayWhenTheTableIsRedesigned)
{
    const Bytes strange = tests::FromHex("0a000000 0300 cafebabe 06000000 0200");
    ChangeStored(
        [&](Bytes& stored) { stored.insert(stored.end(), strange.begin(), strange.end()); });
    const Bytes stored = Stored();
    TableDef days("Days");
    days.Append(TableDef::CreateField("Hrs", FieldType::Double));
    days.Append(Primary("Hrs"));
    database.Append(days);
    database.Execute("INSERT INTO Days VALUES (4)", kFailOnError);
    database.Append(
        RelationDef{"DaysLabor", "Days", "Labor", kRelationDeleteCascade, {{"Hrs", "Hrs"}}});
    EXPECT_TRUE(Stored() == stored);
}

TEST_P(StrangePropertiesTest, RowsAreReadWhereThePropertiesCannotBe)
{
    const Bytes sound = Stored();
    ChangeStored([](Bytes& stored) { stored.resize(stored.size() - 1); });
    {
        Recordset rows = Open("SELECT * FROM Labor WHERE Hrs = 4");
        EXPECT_EQ(rows.RecordCount(), 1);
        Recordset table = Open("Labor");
        EXPECT_EQ(table["Hrs"].Value(), Value(4.0));
        EXPECT_EQ(database.TableDef("Labor").Fields().size(), 2U);
        EXPECT_EQ(database.TableDef("Labor").Indexes().size(), 1U);
    }
    ChangeStored([&](Bytes& stored) { stored = sound; });
}

TEST_P(StrangePropertiesTest, NoRowIsStoredThatUnreadPropertiesMightRefuse)
{
    const Bytes sound = Stored();
    ChangeStored([](Bytes& stored) { stored.resize(stored.size() - 1); });
    const Bytes before = files.Content(kFile);
    const std::string why = "3343 " + base::ErrorText(3343, {"Labor"});
    {
        Recordset rows = Open("Labor");
        rows.Edit();
        rows["Note"] = "x";
        EXPECT_EQ(FailureOf([&] { rows.Update(); }), why);
        rows.CancelUpdate();
    }
    EXPECT_EQ(
        FailureOf([&] { database.Execute("INSERT INTO Labor (Hrs) VALUES (1)", kFailOnError); }),
        why);
    EXPECT_TRUE(files.Content(kFile) == before);
    // No property speaks against a row that goes, nor of another table.
    database.Execute("DELETE FROM Labor", kFailOnError);
    EXPECT_EQ(database.RecordsAffected(), 1);
    Add(1, "Ann");
    ChangeStored([&](Bytes& stored) { stored = sound; });
    database.Execute("INSERT INTO Labor (Hrs) VALUES (1)", kFailOnError);
}

// Another program may mend the page, and nothing else, while we have the file open.
TEST_P(StrangePropertiesTest, UnreadPropertiesAreReadAnewTheNextTime)
{
    const Bytes block = Stored();
    const auto theirs =
        jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadWrite, {},
                                {.use = {}, .self = {"BAY-2", "Admin"}, .pause = {}});
    const auto place = PlaceOf(*theirs, block);
    const auto flipTheMark = [&] {
        jet::pages::Write(*theirs, [&](jet::pages::WriteSet& changes) {
            changes.Change(place.first)[place.second] ^= std::byte{0xFF};
        });
    };
    database.Close();
    flipTheMark();
    database = engine.DefaultWorkspace().OpenDatabase(kFile);
    const auto store = [&] {
        database.Execute("INSERT INTO Labor (Hrs) VALUES (1)", kFailOnError);
    };
    EXPECT_EQ(ErrorOf(store), 3343);
    EXPECT_EQ(ErrorOf(store), 3343);
    flipTheMark();
    store();
    EXPECT_EQ(Open("Labor").RecordCount(), 2);
}

}  // namespace
}  // namespace dao
