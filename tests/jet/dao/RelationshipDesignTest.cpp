// SPDX-License-Identifier: Apache-2.0
// Tests of the making of relationships between tables that are there.
#include "jet/catalog/Catalog.h"
#include "tests/jet/dao/RelationshipFixture.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"

#include <fstream>

namespace dao {
namespace {

class RelationshipDesignTest : public RelationshipFixture {};

INSTANTIATE_TEST_SUITE_P(Kinds, RelationshipDesignTest,
                         testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RelationshipDesignTest, DesignTellsItBack)
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

TEST_P(RelationshipDesignTest, RowsThatAreThereComeIntoTheNewIndex)
{
    Fill();
    for (int i = 0; i < 300; ++i)
        Run("INSERT INTO Lines VALUES (11, 5)");
    Relate(kRelationDeleteCascade);
    Run("DELETE FROM Customers WHERE Id = 1");
    EXPECT_EQ(All("Lines", "Hrs"), Texts{});
}

TEST_P(RelationshipDesignTest, RowThatRefersToNothingDoesNotForbidTheRelationship)
{
    Run("INSERT INTO Orders VALUES (12, Null)");
    EXPECT_EQ(FailureOf([&] { database.Append(OrdersOfCustomers(0)); }), "");
}

TEST_P(RelationshipDesignTest, RowThatRefersToNoneForbidsTheRelationship)
{
    Fill();
    Run("INSERT INTO Orders VALUES (12, 99)");
    EXPECT_EQ(FailureOf([&] { database.Append(OrdersOfCustomers(0)); }),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    EXPECT_TRUE(database.Relations().empty());
    Run("INSERT INTO Orders VALUES (13, 99)");
}

TEST_P(RelationshipDesignTest, DesignRefusesWhatCannotBeHeld)
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
    wish = OrdersOfCustomers(0);
    wish.name = "primarykey";
    EXPECT_EQ(failing(wish), 3284);
    wish = good;
    wish.fields.clear();
    EXPECT_EQ(failing(wish), 3001);
    EXPECT_EQ(failing(good), 0);
}

TEST_P(RelationshipDesignTest, HoldsInASetThatWasOpenBefore)
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

TEST_P(RelationshipDesignTest, TableThatAnotherProgramHasOpenIsNotRedesigned)
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

TEST_P(RelationshipDesignTest, DeletedRelationshipHoldsNoLonger)
{
    Relate(kRelationDeleteCascade);
    Fill();
    database.DeleteRelation("customersorders");
    ASSERT_EQ(database.Relations().size(), 1U);
    EXPECT_EQ(database.Relations()[0].name, "OrdersLines");
    Run("INSERT INTO Orders VALUES (12, 99)");
    Run("DELETE FROM Customers");
    EXPECT_EQ(All("Orders", "Number"), (Texts{"10", "11", "12"}));
    // The other one does.
    EXPECT_EQ(Failing("INSERT INTO Lines VALUES (77, 1)"),
              "3201 " + base::ErrorText(3201, {"Orders"}));
    Run("DELETE FROM Orders WHERE Number = 10");
    EXPECT_EQ(All("Lines", "Hrs"), (Texts{"3", "4"}));
    EXPECT_EQ(ErrorOf([&] { database.DeleteRelation("CustomersOrders"); }), 3265);
    database.DeleteRelation("OrdersLines");
    EXPECT_TRUE(database.Relations().empty());
    Run("INSERT INTO Lines VALUES (77, 1)");
}

TEST_P(RelationshipDesignTest, RelationshipIsMadeAgainAfterItWasDeleted)
{
    Relate(0);
    Fill();
    const std::size_t size = files.Content(kFile).size();
    for (int i = 0; i < 5; ++i) {
        database.DeleteRelation("CustomersOrders");
        EXPECT_SPOTLESS(files, kFile);
        database.Append(OrdersOfCustomers(kRelationUpdateCascade));
        EXPECT_SPOTLESS(files, kFile);
    }
    // What was given back is used again.
    EXPECT_LE(files.Content(kFile).size(), size + 4096U);
    Run("UPDATE Customers SET Id = 5 WHERE Id = 1");
    EXPECT_EQ(All("Orders", "Customer"), (Texts{"5", "5"}));
}

TEST_P(RelationshipDesignTest, IndexThatOthersNeedStaysWhenARelationshipGoes)
{
    Relate(0);
    RelationDef second = OrdersOfCustomers(0);
    second.name = "Second";
    database.Append(second);
    Fill();
    database.DeleteRelation("CustomersOrders");
    EXPECT_EQ(Failing("INSERT INTO Orders VALUES (12, 99)"),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    database.DeleteRelation("Second");
    Run("INSERT INTO Orders VALUES (12, 99)");
    EXPECT_EQ(database.TableDef("Orders").Indexes().size(), 1U);
    EXPECT_EQ(Failing("INSERT INTO Orders VALUES (12, 1)"), "3022 " + base::ErrorText(3022));
    EXPECT_EQ(Failing("INSERT INTO Lines VALUES (77, 1)"),
              "3201 " + base::ErrorText(3201, {"Orders"}));
}

TEST_P(RelationshipDesignTest, RelationshipOfATableToItselfIsDeleted)
{
    MakeStaff(0);
    Run("INSERT INTO Staff VALUES (1, Null)");
    Run("INSERT INTO Staff VALUES (2, 1)");
    database.DeleteRelation("StaffStaff");
    Run("INSERT INTO Staff VALUES (3, 99)");
    Run("DELETE FROM Staff WHERE Id = 1");
}

TEST_P(RelationshipDesignTest, RelationshipThatIsNotEnforcedIsDeleted)
{
    database.Append(OrdersOfCustomers(kRelationDontEnforce));
    database.DeleteRelation("CustomersOrders");
    EXPECT_TRUE(database.Relations().empty());
}

TEST_P(RelationshipDesignTest, NoRelationshipIsDeletedThatAnotherProgramUses)
{
    Relate(0);
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
    {
        Recordset open = theirs.OpenRecordset("Customers");
        EXPECT_EQ(ErrorOf([&] { database.DeleteRelation("CustomersOrders"); }), 3262);
        EXPECT_EQ(database.Relations().size(), 2U);
    }
    database.DeleteRelation("CustomersOrders");
    theirs.Execute("INSERT INTO Orders VALUES (1, 9)", kFailOnError);
}

TEST_P(RelationshipDesignTest, SetThatIsOpenGoesOnWithoutTheRelationship)
{
    Relate(0);
    Fill();
    Recordset orders = Open("Orders");
    database.DeleteRelation("CustomersOrders");
    orders.Edit();
    orders["Customer"] = std::int32_t{5};
    orders.Update();
    EXPECT_EQ(orders["Customer"].Value(), base::Value(std::int32_t{5}));
}

TEST_P(RelationshipDesignTest, DefinitionGivesItsFurtherPagesBack)
{
    TableDef wide("Wide");
    for (int i = 0; i < 25; ++i)
        wide.Append(
            TableDef::CreateField("Reference number " + std::to_string(100 + i), FieldType::Long));
    database.Append(wide);
    const auto named = [](int i) {
        return "Relationship of the field Reference number " + std::to_string(100 + i);
    };
    for (int i = 0; i < 25; ++i)
        database.Append(RelationDef{named(i),
                                    "Customers",
                                    "Wide",
                                    0,
                                    {{"Id", "Reference number " + std::to_string(100 + i)}}});
    Run("INSERT INTO Customers VALUES (1, 'Ann')");
    Run("INSERT INTO Wide ([Reference number 124]) VALUES (1)");
    // Not in the order in which they were made.
    for (int i = 0; i < 24; ++i)
        database.DeleteRelation(named(i * 7 % 24));
    Run("INSERT INTO Wide ([Reference number 100]) VALUES (2)");
    EXPECT_EQ(Failing("INSERT INTO Wide ([Reference number 124]) VALUES (2)"),
              "3201 " + base::ErrorText(3201, {"Customers"}));
    EXPECT_EQ(Failing("DELETE FROM Customers"), "3200 " + base::ErrorText(3200, {"Wide"}));
}

TEST_P(RelationshipDesignTest, OtherReaderReadsTheTablesAfterARelationshipIsGone)
{
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    Relate(0);
    Fill();
    database.DeleteRelation("CustomersOrders");
    const tests::ScratchFolder folder;
    const std::filesystem::path copy = folder.Path() / "copy.mdb";
    {
        std::ofstream out(copy, std::ios::binary);
        for (const std::byte byte : files.Content(kFile))
            out.put(static_cast<char>(byte));
    }
    EXPECT_EQ(tests::MdbExport(copy, "Orders").size(), 2U);
    EXPECT_EQ(tests::MdbExport(copy, "Customers")[1].at("Name"), "Bob");
    EXPECT_EQ(tests::MdbExport(copy, "MSysRelationships").size(), 1U);
}

TEST_P(RelationshipDesignTest, ManyRelationshipsMakeTheDefinitionGrow)
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

TEST_P(RelationshipDesignTest, TableHasUpTo32Indexes)
{
    const auto further = [&](int number) {
        RelationDef relation = OrdersOfCustomers(0);
        relation.name += std::to_string(number);
        return ErrorOf([&] { database.Append(relation); });
    };
    // Each table has a primary key.
    for (int number = 1; number < 32; ++number)
        ASSERT_EQ(further(number), 0) << number;
    EXPECT_EQ(further(32), 3001);
    EXPECT_EQ(database.Relations().size(), 31U);
    Fill();
}

TEST_P(RelationshipDesignTest, IndexesStandInTheOrderOfTheirNames)
{
    Relate(0);
    const auto pager = jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadOnly);
    const jet::catalog::OpenTable orders = jet::catalog::Catalog(pager).Open("Orders");
    Texts names;
    for (const jet::format::NamedIndex& index : orders.rows->Definition().namedIndexes)
        names.push_back(index.name);
    EXPECT_EQ(names, (Texts{".rC", "CustomersOrders", "PrimaryKey"}));
}

}  // namespace
}  // namespace dao
