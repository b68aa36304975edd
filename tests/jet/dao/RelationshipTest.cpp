// SPDX-License-Identifier: Apache-2.0
// Tests of relationships: held when rows are written, cascaded, read from samples.
#include "jet/catalog/Catalog.h"
#include "jet/io/StdFile.h"
#include "tests/jet/dao/RelationshipFixture.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

namespace dao {
namespace {

using base::Value;

class RelationshipTest : public RelationshipFixture {};

INSTANTIATE_TEST_SUITE_P(Kinds, RelationshipTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RelationshipTest, RowMustReferToOneThatIsThere)
{
    Relate(0);
    Fill();
    EXPECT_EQ(Failing("INSERT INTO Orders VALUES (12, 3)"),
              "3201 You cannot add or change a record because a related record is required in "
              "table 'Customers'.");
    EXPECT_EQ(Failing("UPDATE Orders SET Customer = 4 WHERE Number = 10"),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    EXPECT_EQ(All("Orders", "Customer"), (Texts{"1", "1"}));
    EXPECT_EQ(Failing("UPDATE Orders SET Customer = 2 WHERE Number = 10"), "");
    EXPECT_EQ(Failing("INSERT INTO Orders VALUES (12, Null)"), "");
}

TEST_P(RelationshipTest, RecordSetKeepsTheEditThatAReferenceForbids)
{
    Relate(0);
    Fill();
    Recordset orders = Open("Orders");
    orders.AddNew();
    orders["Number"] = std::int32_t{12};
    orders["Customer"] = std::int32_t{9};
    EXPECT_EQ(ErrorOf([&] { orders.Update(); }), 3201);
    EXPECT_EQ(orders.EditMode(), EditMode::Add);
    orders["Customer"] = std::int32_t{2};
    orders.Update();
    EXPECT_EQ(orders.RecordCount(), 3);
}

TEST_P(RelationshipTest, RowThatOthersReferToStaysAsItIs)
{
    Relate(0);
    Fill();
    EXPECT_EQ(Failing("DELETE FROM Customers WHERE Id = 1"),
              "3200 The record cannot be deleted or changed because table 'Orders' includes "
              "related records.");
    EXPECT_EQ(Failing("UPDATE Customers SET Id = 5 WHERE Id = 1"),
              "3200 " + base::ErrorText(3200, {"Orders"}));
    EXPECT_EQ(Failing("UPDATE Customers SET Name = 'Eve' WHERE Id = 1"), "");
    EXPECT_EQ(Failing("DELETE FROM Customers WHERE Id = 2"), "");
    EXPECT_EQ(All("Customers", "Name"), (Texts{"Eve"}));
}

TEST_P(RelationshipTest, RecordSetDoesNotDeleteARowThatOthersReferTo)
{
    Relate(0);
    Fill();
    Recordset customers = Open("SELECT * FROM Customers");
    EXPECT_EQ(ErrorOf([&] { customers.Delete(); }), 3200);
    EXPECT_EQ(customers["Name"].Value(), Value("Ann"));
}

TEST_P(RelationshipTest, StatementIsUndoneWholeWhenOneRowIsRefused)
{
    Relate(0);
    Fill();
    EXPECT_EQ(Failing("DELETE FROM Customers"), "3200 " + base::ErrorText(3200, {"Orders"}));
    EXPECT_EQ(All("Customers", "Id"), (Texts{"1", "2"}));
    database.Execute("DELETE FROM Customers");
    EXPECT_EQ(database.RecordsAffected(), 1);
    EXPECT_EQ(All("Customers", "Id"), (Texts{"1"}));
}

TEST_P(RelationshipTest, DeleteCascadesThroughAllTables)
{
    Relate(kRelationDeleteCascade);
    Fill();
    Recordset customers = Open("SELECT * FROM Customers");
    customers.Delete();
    EXPECT_EQ(All("Customers", "Id"), (Texts{"2"}));
    EXPECT_EQ(All("Orders", "Number"), Texts{});
    EXPECT_EQ(All("Lines", "Hrs"), Texts{});
}

TEST_P(RelationshipTest, UpdateCascades)
{
    Relate(kRelationUpdateCascade);
    Fill();
    Run("UPDATE Customers SET Id = 7 WHERE Id = 1");
    EXPECT_EQ(All("Orders", "Customer"), (Texts{"7", "7"}));
    Run("UPDATE Orders SET Number = Number + 100");
    EXPECT_EQ(All("Lines", "Order"), (Texts{"110", "110", "111", "111"}));
    EXPECT_EQ(Failing("DELETE FROM Orders WHERE Number = 110"),
              "3200 " + base::ErrorText(3200, {"Lines"}));
}

TEST_P(RelationshipTest, CascadeThatMeetsARefusalLeavesEverythingAsItWas)
{
    database.Append(OrdersOfCustomers(kRelationDeleteCascade));
    database.Append(RelationDef{"OrdersLines", "Orders", "Lines", 0, {{"Number", "Order"}}});
    Fill();
    EXPECT_EQ(Failing("DELETE FROM Customers WHERE Id = 1"),
              "3200 " + base::ErrorText(3200, {"Lines"}));
    EXPECT_EQ(All("Customers", "Id"), (Texts{"1", "2"}));
    EXPECT_EQ(All("Orders", "Number"), (Texts{"10", "11"}));
}

TEST_P(RelationshipTest, CascadeObeysTheRulesOfTheOtherTable)
{
    TableDef notes("Notes");
    FieldDef customer = TableDef::CreateField("Customer", FieldType::Long);
    customer.validationRule = "<100";
    customer.validationText = "Two digits.";
    notes.Append(customer);
    database.Append(notes);
    database.Append(RelationDef{
        "CustomersNotes", "Customers", "Notes", kRelationUpdateCascade, {{"Id", "Customer"}}});
    Run("INSERT INTO Customers VALUES (1, 'Ann')");
    Run("INSERT INTO Notes VALUES (1)");
    EXPECT_EQ(Failing("UPDATE Customers SET Id = 100"), "3316 Two digits.");
    EXPECT_EQ(All("Customers", "Id"), (Texts{"1"}));
    Run("UPDATE Customers SET Id = 99");
    EXPECT_EQ(All("Notes", "Customer"), (Texts{"99"}));
}

TEST_P(RelationshipTest, DeletingRowsThatACascadeTakesAnywayIsNoFailure)
{
    MakeStaff(kRelationDeleteCascade);
    Run("INSERT INTO Staff VALUES (1, 1)");
    Run("INSERT INTO Staff VALUES (2, 1)");
    Run("INSERT INTO Staff VALUES (3, 2)");
    EXPECT_EQ(Failing("INSERT INTO Staff VALUES (4, 5)"),
              "3201 " + base::ErrorText(3201, {"Staff"}));
    Run("DELETE FROM Staff WHERE Id < 3");
    EXPECT_EQ(All("Staff", "Id"), Texts{});
}

TEST_P(RelationshipTest, CascadeMayMeetARowTwice)
{
    TableDef staff("Staff");
    for (const char* field : {"Id", "Boss", "Deputy"})
        staff.Append(TableDef::CreateField(field, FieldType::Long));
    staff.Append(Primary("Id"));
    database.Append(staff);
    for (const char* field : {"Boss", "Deputy"})
        database.Append(RelationDef{std::string("Staff") + field,
                                    "Staff",
                                    "Staff",
                                    kRelationDeleteCascade,
                                    {{"Id", field}}});
    Run("INSERT INTO Staff VALUES (1, Null, Null)");
    Run("INSERT INTO Staff VALUES (2, 1, Null)");
    Run("INSERT INTO Staff VALUES (3, 1, 2)");
    Run("DELETE FROM Staff WHERE Id = 1");
    EXPECT_EQ(All("Staff", "Id"), Texts{});
}

TEST_P(RelationshipTest, RowMayReferToItselfAndBeDeleted)
{
    MakeStaff(0);
    Run("INSERT INTO Staff VALUES (1, 1)");
    Run("INSERT INTO Staff VALUES (2, 1)");
    EXPECT_EQ(Failing("DELETE FROM Staff WHERE Id = 1"),
              "3200 " + base::ErrorText(3200, {"Staff"}));
    Run("DELETE FROM Staff WHERE Id = 2");
    Run("DELETE FROM Staff WHERE Id = 1");
    EXPECT_EQ(All("Staff", "Id"), Texts{});
}

TEST_P(RelationshipTest, ChainBeyondTheLimitIsRefusedWhole)
{
    MakeStaff(kRelationDeleteCascade);
    constexpr std::int32_t kLength = 301;
    Recordset rows = Open("Staff");
    for (std::int32_t id = 1; id <= kLength; ++id) {
        rows.AddNew();
        rows["Id"] = id;
        rows["Boss"] = id == 1 ? Value() : Value(id - 1);
        rows.Update();
    }
    EXPECT_EQ(ErrorOf([&] { Run("DELETE FROM Staff WHERE Id = 1"); }), 3035);
    EXPECT_EQ(rows.RecordCount(), kLength);
    Run("DELETE FROM Staff WHERE Id = 2");
    EXPECT_EQ(rows.RecordCount(), 1);
}

TEST_P(RelationshipTest, KeysOfSeveralFieldsReferTogether)
{
    TableDef days("Days");
    days.Append(TableDef::CreateField("Shop", FieldType::Text, 10));
    days.Append(TableDef::CreateField("Day", FieldType::Date));
    IndexDef key = Primary("Day");
    key.fields.push_back({"Shop", false});
    days.Append(key);
    database.Append(days);
    TableDef jobs("Jobs");
    jobs.Append(TableDef::CreateField("Shop", FieldType::Text, 10));
    jobs.Append(TableDef::CreateField("Day", FieldType::Date));
    database.Append(jobs);
    database.Append(RelationDef{
        "DaysJobs", "Days", "Jobs", kRelationUpdateCascade, {{"Shop", "Shop"}, {"Day", "Day"}}});
    Run("INSERT INTO Days VALUES ('North', #3/15/2004#)");
    EXPECT_EQ(Failing("INSERT INTO Jobs VALUES ('South', #3/15/2004#)"),
              "3201 " + base::ErrorText(3201, {"Days"}));
    Run("INSERT INTO Jobs VALUES ('NORTH', #3/15/2004#)");
    Run("INSERT INTO Jobs VALUES (Null, #3/16/2004#)");
    Run("UPDATE Days SET Shop = 'West'");
    EXPECT_EQ(All("Jobs", "Shop"), (Texts{"West", "<null>"}));
}

TEST_P(RelationshipTest, NobodyRefersToANull)
{
    TableDef codes("Codes");
    codes.Append(TableDef::CreateField("Code", FieldType::Long));
    IndexDef unique = Primary("Code");
    unique.primary = false;
    unique.unique = true;
    codes.Append(unique);
    database.Append(codes);
    TableDef uses("Uses");
    uses.Append(TableDef::CreateField("Code", FieldType::Long));
    database.Append(uses);
    database.Append(RelationDef{"CodesUses", "Codes", "Uses", 0, {{"Code", "Code"}}});
    Run("INSERT INTO Codes VALUES (Null)");
    Run("INSERT INTO Uses VALUES (Null)");
    EXPECT_EQ(Failing("UPDATE Codes SET Code = 5"), "");
    EXPECT_EQ(Failing("UPDATE Codes SET Code = Null"), "");
    EXPECT_EQ(Failing("DELETE FROM Codes"), "");
    EXPECT_EQ(All("Uses", "Code"), Texts{"<null>"});
}

TEST_P(RelationshipTest, DeletionMaySetNull)
{
    Relate(0x2000);
    Fill();
    Run("DELETE FROM Customers WHERE Id = 1");
    EXPECT_EQ(All("Orders", "Customer"), (Texts{"<null>", "<null>"}));
    EXPECT_EQ(All("Lines", "Order"), (Texts{"10", "10", "11", "11"}));
    EXPECT_EQ(Failing("UPDATE Orders SET Number = 12 WHERE Number = 10"),
              "3200 " + base::ErrorText(3200, {"Lines"}));
}

// A row that some other program left without the one it refers to can still be changed.
TEST_P(RelationshipTest, OnlyAChangedReferenceIsLookedAt)
{
    Relate(0);
    Fill();
    {
        const auto pager = jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadWrite);
        const jet::catalog::OpenTable orders = jet::catalog::Catalog(pager).Open("Orders");
        const std::vector<jet::table::Assignment> orphan{{0, std::int32_t{12}},
                                                         {1, std::int32_t{99}}};
        static_cast<void>(orders.rows->Insert(orphan));
    }
    EXPECT_EQ(Failing("UPDATE Orders SET Number = 13 WHERE Number = 12"), "");
    EXPECT_EQ(Failing("UPDATE Orders SET Customer = 99 WHERE Number = 10"),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    Run("UPDATE Orders SET Customer = 2 WHERE Number = 13");
}

TEST_P(RelationshipTest, SpellingOfAKeyMayChangeThoughOthersReferToIt)
{
    TableDef codes("Codes");
    codes.Append(TableDef::CreateField("Code", FieldType::Text, 10));
    codes.Append(Primary("Code"));
    database.Append(codes);
    TableDef uses("Uses");
    uses.Append(TableDef::CreateField("Code", FieldType::Text, 10));
    database.Append(uses);
    database.Append(RelationDef{"CodesUses", "Codes", "Uses", 0, {{"Code", "Code"}}});
    Run("INSERT INTO Codes VALUES ('body')");
    Run("INSERT INTO Uses VALUES ('body')");
    EXPECT_EQ(Failing("UPDATE Codes SET Code = 'Body'"), "");
    EXPECT_EQ(Failing("UPDATE Codes SET Code = 'Paint'"),
              "3200 " + base::ErrorText(3200, {"Uses"}));
}

TEST_P(RelationshipTest, RelationshipThatIsNotEnforcedForbidsNothing)
{
    Relate(kRelationDontEnforce);
    Fill();
    Run("INSERT INTO Orders VALUES (12, 99)");
    Run("DELETE FROM Customers");
    EXPECT_EQ(All("Orders", "Number"), (Texts{"10", "11", "12"}));
    EXPECT_EQ(database.Relations().size(), 2U);
}

// A cascade opens tables that nobody asked for; they are let go with the last one that somebody
// did ask for.
TEST_P(RelationshipTest, TablesOfACascadeAreNotKeptOpen)
{
    Relate(kRelationDeleteCascade);
    Fill();
    Run("DELETE FROM Customers WHERE Id = 1");
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
    theirs.Append(RelationDef{"CustomersLines", "Customers", "Lines", 0, {{"Id", "Order"}}});
    EXPECT_EQ(Failing("INSERT INTO Lines VALUES (2, 1)"),
              "3201 " + base::ErrorText(3201, {"Orders"}));
}

// All of a cascade or nothing of it, however many tables it goes through.
TEST_P(RelationshipTest, CascadeIsOneWriteSet)
{
    Relate(kRelationDeleteCascade);
    Fill();
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
    Recordset editing = theirs.OpenRecordset("SELECT * FROM Lines");
    editing.Edit();
    EXPECT_EQ(ErrorOf([&] { Run("DELETE FROM Customers WHERE Id = 1"); }), 3260);
    EXPECT_EQ(All("Customers", "Id"), (Texts{"1", "2"}));
    EXPECT_EQ(All("Orders", "Number"), (Texts{"10", "11"}));
    editing.CancelUpdate();
    Run("DELETE FROM Customers WHERE Id = 1");
    EXPECT_EQ(All("Lines", "Hrs"), Texts{});
}

// Table1 refers to Table2 (otherfk1, deletes cascade) and to Table3 (otherfk2, updates cascade).
class SampleRelationshipTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Samples, SampleRelationshipTest,
                         testing::Values("indexTestV1997", "indexTestV2000"),
                         [](const auto& each) { return std::string(each.param); });

TEST_P(SampleRelationshipTest, RelationshipsOfTheFileAreHeld)
{
    const auto sample = tests::SampleFolder() / "mdb" / (std::string(GetParam()) + ".mdb");
    SKIP_WITHOUT_SAMPLE(sample);
    const tests::ScratchFolder scratch;
    const std::string path = scratch.Copy(sample).string();
    {
        DBEngine engine({[] { return kNow; }});
        Database database = engine.DefaultWorkspace().OpenDatabase(path);
        const auto failing = [&](const char* sql) {
            return FailureOf([&] { database.Execute(sql, kFailOnError); });
        };
        const auto all = [&](const char* sql, const char* field) {
            Recordset rows = database.OpenRecordset(sql);
            return Column(rows, field);
        };
        EXPECT_EQ(failing("INSERT INTO Table1 (id, otherfk1) VALUES (9, 77)"),
                  "3201 " + base::ErrorText(3201, {"Table2"}));
        EXPECT_EQ(failing("UPDATE Table2 SET id = 5 WHERE id = 0"),
                  "3200 " + base::ErrorText(3200, {"Table1"}));
        EXPECT_EQ(failing("DELETE FROM Table3 WHERE id = 13"),
                  "3200 " + base::ErrorText(3200, {"Table1"}));
        EXPECT_EQ(failing("UPDATE Table3 SET id = 20 WHERE id = 10"), "");
        EXPECT_EQ(failing("DELETE FROM Table2 WHERE id = 1"), "");
        EXPECT_EQ(all("SELECT * FROM Table1 ORDER BY id", "otherfk2"),
                  (std::vector<std::string>{"20", "13"}));
        EXPECT_EQ(all("SELECT * FROM Table2 ORDER BY id", "id"),
                  (std::vector<std::string>{"0", "2"}));
    }
    jet::io::StdFileSystem disk;
    EXPECT_SPOTLESS(disk, path);
}

}  // namespace
}  // namespace dao
