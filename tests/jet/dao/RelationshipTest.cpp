// SPDX-License-Identifier: Apache-2.0
// Tests of relationships: made by design, held when rows are written, cascaded, read from samples.
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

namespace dao {
namespace {

using base::Value;

class RelationshipTest : public DaoKindTest {
protected:
    RelationshipTest()
    {
        TableDef customers("Customers");
        customers.Append(TableDef::CreateField("Id", FieldType::Long));
        customers.Append(TableDef::CreateField("Name", FieldType::Text, 40));
        customers.Append(Primary("Id"));
        database.Append(customers);
        TableDef orders("Orders");
        orders.Append(TableDef::CreateField("Number", FieldType::Long));
        orders.Append(TableDef::CreateField("Customer", FieldType::Long));
        orders.Append(Primary("Number"));
        database.Append(orders);
        TableDef lines("Lines");
        lines.Append(TableDef::CreateField("Order", FieldType::Long));
        FieldDef hours = TableDef::CreateField("Hrs", FieldType::Double);
        hours.validationRule = "<100";
        lines.Append(hours);
        database.Append(lines);
    }

    static IndexDef Primary(const char* field)
    {
        IndexDef key;
        key.name = "PrimaryKey";
        key.fields.push_back({field, true});
        key.primary = true;
        return key;
    }

    // Orders belong to customers, lines to orders.
    void Relate(int attributes)
    {
        database.Append(OrdersOfCustomers(attributes));
        database.Append(
            RelationDef{"OrdersLines", "Orders", "Lines", attributes, {{"Number", "Order"}}});
    }
    static RelationDef OrdersOfCustomers(int attributes)
    {
        return {"CustomersOrders", "Customers", "Orders", attributes, {{"Id", "Customer"}}};
    }

    // A table whose rows refer to each other.
    void MakeStaff(int attributes)
    {
        TableDef staff("Staff");
        staff.Append(TableDef::CreateField("Id", FieldType::Long));
        staff.Append(TableDef::CreateField("Boss", FieldType::Long));
        staff.Append(Primary("Id"));
        database.Append(staff);
        database.Append(RelationDef{"StaffStaff", "Staff", "Staff", attributes, {{"Id", "Boss"}}});
    }

    // Two customers; the first has two orders of two lines each.
    void Fill()
    {
        for (const char* sql :
             {"INSERT INTO Customers VALUES (1, 'Ann')", "INSERT INTO Customers VALUES (2, 'Bob')",
              "INSERT INTO Orders VALUES (10, 1)", "INSERT INTO Orders VALUES (11, 1)",
              "INSERT INTO Lines VALUES (10, 1)", "INSERT INTO Lines VALUES (10, 2)",
              "INSERT INTO Lines VALUES (11, 3)", "INSERT INTO Lines VALUES (11, 4)"})
            Run(sql);
    }

    void Run(std::string_view sql) { database.Execute(sql, kFailOnError); }
    [[nodiscard]] std::string Failing(std::string_view sql)
    {
        return FailureOf([&] { Run(sql); });
    }
    [[nodiscard]] std::vector<std::string> All(const std::string& table, const char* field)
    {
        Recordset rows = Open("SELECT * FROM [" + table + "]");
        return Column(rows, field);
    }
    using Texts = std::vector<std::string>;
};

INSTANTIATE_TEST_SUITE_P(Kinds, RelationshipTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RelationshipTest, DesignTellsItBack)
{
    Relate(kRelationDeleteCascade);
    const std::vector<RelationDef> all = database.Relations();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].name, "CustomersOrders");
    EXPECT_EQ(all[0].table, "Customers");
    EXPECT_EQ(all[0].foreignTable, "Orders");
    EXPECT_EQ(all[0].attributes, kRelationDeleteCascade);
    ASSERT_EQ(all[0].fields.size(), 1U);
    EXPECT_EQ(all[0].fields[0].field, "Id");
    EXPECT_EQ(all[0].fields[0].foreignField, "Customer");
    // The indexes of relationships are nobody's own.
    EXPECT_EQ(database.TableDef("Orders").Indexes().size(), 1U);
}

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

TEST_P(RelationshipTest, RowsThatAreThereComeIntoTheNewIndex)
{
    Fill();
    for (int i = 0; i < 300; ++i)
        Run("INSERT INTO Lines VALUES (11, 5)");
    Relate(kRelationDeleteCascade);
    Run("DELETE FROM Customers WHERE Id = 1");
    EXPECT_EQ(All("Lines", "Hrs"), Texts{});
}

TEST_P(RelationshipTest, RowThatRefersToNoneForbidsTheRelationship)
{
    Fill();
    Run("INSERT INTO Orders VALUES (12, 99)");
    EXPECT_EQ(FailureOf([&] { database.Append(OrdersOfCustomers(0)); }),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    EXPECT_TRUE(database.Relations().empty());
    Run("INSERT INTO Orders VALUES (13, 99)");
}

TEST_P(RelationshipTest, DesignRefusesWhatCannotBeHeld)
{
    Relate(0);
    const auto failing = [&](RelationDef relation) {
        return ErrorOf([&] { database.Append(relation); });
    };
    RelationDef good{"New", "Customers", "Lines", 0, {{"Id", "Order"}}};
    RelationDef wish = good;
    wish.name = "customersorders";
    EXPECT_EQ(failing(wish), 3012);
    wish = good;
    wish.table = "Nobody";
    EXPECT_EQ(failing(wish), 3011);
    wish = good;
    wish.fields[0].foreignField = "Nothing";
    EXPECT_EQ(failing(wish), 3018);
    wish = good;
    wish.fields[0].foreignField = "Hrs";
    EXPECT_EQ(failing(wish), 3615);
    wish = {"New", "Lines", "Customers", 0, {{"Order", "Id"}}};
    EXPECT_EQ(failing(wish), 3015);
    wish = good;
    wish.name = "a.b";
    EXPECT_EQ(failing(wish), 3125);
    wish = good;
    wish.fields.clear();
    EXPECT_EQ(failing(wish), 3001);
    EXPECT_EQ(failing(good), 0);
}

TEST_P(RelationshipTest, HoldsInASetThatWasOpenBefore)
{
    Fill();
    Recordset orders = Open("Orders");
    database.Append(OrdersOfCustomers(0));
    orders.Edit();
    orders["Customer"] = std::int32_t{5};
    EXPECT_EQ(ErrorOf([&] { orders.Update(); }), 3201);
    orders["Customer"] = std::int32_t{2};
    orders.Update();
}

TEST_P(RelationshipTest, TableThatAnotherProgramHasOpenIsNotRedesigned)
{
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
    for (const char* table : {"Customers", "Orders"}) {
        Recordset open = theirs.OpenRecordset(table);
        EXPECT_EQ(FailureOf([&] { database.Append(OrdersOfCustomers(0)); }),
                  "3262 " + base::ErrorText(3262, {table, "BAY-2", "Admin"}));
        EXPECT_TRUE(database.Relations().empty());
    }
    database.Append(OrdersOfCustomers(0));
    EXPECT_EQ(theirs.OpenRecordset("Orders").RecordCount(), 0);
    EXPECT_EQ(ErrorOf([&] { theirs.Execute("INSERT INTO Orders VALUES (1, 9)", kFailOnError); }),
              3201);
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

TEST_P(RelationshipTest, ManyRelationshipsMakeTheDefinitionGrow)
{
    TableDef wide("Wide");
    for (int i = 0; i < 25; ++i) {
        const std::string name = "Reference number " + std::to_string(100 + i);
        wide.Append(TableDef::CreateField(name, FieldType::Long));
    }
    database.Append(wide);
    for (int i = 0; i < 25; ++i) {
        const std::string field = "Reference number " + std::to_string(100 + i);
        database.Append(RelationDef{
            "Relationship of the field " + field, "Customers", "Wide", 0, {{"Id", field}}});
    }
    Run("INSERT INTO Customers VALUES (1, 'Ann')");
    Run("INSERT INTO Wide ([Reference number 124]) VALUES (1)");
    EXPECT_EQ(Failing("INSERT INTO Wide ([Reference number 100]) VALUES (2)"),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    EXPECT_EQ(Failing("DELETE FROM Customers"), "3200 " + base::ErrorText(3200, {"Wide"}));
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
    EXPECT_CLEAN(disk, path);
}

}  // namespace
}  // namespace dao
