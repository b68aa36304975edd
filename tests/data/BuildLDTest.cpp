// SPDX-License-Identifier: Apache-2.0
#include "data/Schema.h"
#include "data/modBuildLD.h"
#include "tests/support/ShopFixture.h"

namespace lodrin {
namespace {

using base::Null;
using base::Value;
using dao::FieldType;

const std::vector<std::string> kSteps{"Building/Verifying Kelvaro.mdb - LD Employee Table",
                                      "Building/Verifying Kelvaro.mdb - LD Totals Table",
                                      "Building/Verifying Kelvaro.mdb - LD History Table",
                                      "Building/Verifying Kelvaro.mdb - Status Description Table"};

class BuildLDTest : public tests::ShopFixture {
protected:
    BuildLDTest()
    {
        fakes.files.Write("C:/Shop/Kelvaro.mdb", "");
        platform::Label& label = shop.forms.procMsg.Label1;
        label.changed = [this, &label] {
            EXPECT_TRUE(dialogs.procMsgVisible);
            steps_.push_back(label.Caption());
        };
    }

    void WithoutOwnTables()
    {
        disk.Remove(DatabasePath());
        MakeManagementDatabase();
    }
    dao::Database Reopen() { return engine.DefaultWorkspace().OpenDatabase(DatabasePath()); }

    std::vector<std::string> steps_;
};

TEST_F(BuildLDTest, TheFourTablesAreMadeFieldByField)
{
    WithoutOwnTables();
    BuildLD(shop, "C:\\Shop");
    const dao::Database database = Reopen();
    for (const dao::TableDef& expected : tests::ProgramTables()) {
        const dao::TableDef made = database.TableDef(expected.Name());
        ASSERT_EQ(made.Fields().size(), expected.Fields().size()) << expected.Name();
        EXPECT_TRUE(made.Indexes().empty());
        for (std::size_t at = 0; at < made.Fields().size(); ++at) {
            const dao::FieldDef& field = made.Fields()[at];
            const dao::FieldDef& other = expected.Fields()[at];
            EXPECT_EQ(field.name, other.name);
            EXPECT_EQ(field.type, other.type) << field.name;
            if (field.type == FieldType::Text) {
                EXPECT_EQ(field.size, other.size) << field.name;
            }
            EXPECT_EQ(field.defaultValue, other.defaultValue) << field.name;
            EXPECT_EQ(field.allowZeroLength, field.type == FieldType::Text) << field.name;
            EXPECT_EQ((field.attributes & dao::kAutoIncrField) != 0, at == 0) << field.name;
            EXPECT_FALSE(field.required);
        }
    }
    EXPECT_TRUE(Reports().empty());
}

TEST_F(BuildLDTest, AFieldOfSeveralTablesHasOneTypeAndSize)
{
    std::map<std::string_view, FieldSchema> known;
    for (const TableSchema& table : OwnTables()) {
        for (const FieldSchema& field : table.fields) {
            const auto seen = known.emplace(field.name, field).first;
            EXPECT_EQ(seen->second.type, field.type) << field.name;
            EXPECT_EQ(seen->second.size, field.size) << field.name;
        }
    }
    EXPECT_EQ(known.at("VehDesc").size, 100);
}

TEST_F(BuildLDTest, ItsWindowShowsTheFourStepsAndIsGoneAfterwards)
{
    WithoutOwnTables();
    BuildLD(shop, "C:\\Shop");
    EXPECT_EQ(steps_, kSteps);
    EXPECT_FALSE(dialogs.procMsgVisible);
    EXPECT_EQ(shop.forms.procMsg.caption.Caption(), "Form1");
    EXPECT_EQ(fakes.events.count, 2);
}

TEST_F(BuildLDTest, TablesThatAreThereStayAsTheyAreAndNothingIsReported)
{
    Given({tests::Employee("Smith, Ann", 7)});
    const tests::Contents before = Stored();
    BuildLD(shop, "C:\\Shop");
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(steps_, kSteps);
    EXPECT_EQ(shop.values.LastErrNumber, 3010);
    EXPECT_EQ(shop.values.tableExists, 1);
    EXPECT_TRUE(Reports().empty());
    EXPECT_TRUE(fakes.prompts.boxes.empty());
}

TEST_F(BuildLDTest, EachTableThatIsThereRefusesToBeMadeAgainInSilence)
{
    std::vector<double> errors;
    shop.forms.procMsg.Label1.changed = [&] {
        errors.push_back(shop.values.LastErrNumber);
        shop.values.LastErrNumber = 0;
    };
    BuildLD(shop, "C:\\Shop");
    errors.push_back(shop.values.LastErrNumber);
    EXPECT_EQ(errors, (std::vector<double>{0, 3010, 3010, 3010, 3010}));
}

TEST_F(BuildLDTest, AHistoryThatIsThereStaysEvenWithOtherFields)
{
    WithoutOwnTables();
    dao::TableDef history("LDHistory");
    history.Append(dao::TableDef::CreateField("Own", FieldType::Text, 20));
    Reopen().Append(history);
    BuildLD(shop, "C:\\Shop");
    const dao::Database database = Reopen();
    EXPECT_EQ(database.TableDef("LDHistory").Fields().size(), 1U);
    EXPECT_EQ(database.TableDef("LDEmp").Fields().size(), 12U);
    EXPECT_EQ(database.TableDef("LDTotals").Fields().size(), 8U);
    EXPECT_EQ(database.TableDef("Status").Fields().size(), 5U);
}

TEST_F(BuildLDTest, AFolderWithoutTheFileIsReportedAndEndsTheProgram)
{
    fakes.prompts.Expect("could not find database Ostrel at C:\\Elsewhere");
    EXPECT_THROW(BuildLD(shop, "C:\\Elsewhere"), platform::ProgramEnded);
    EXPECT_EQ(fakes.prompts.boxes,
              (std::vector<platform::Box>{
                  {.text = "could not find database Ostrel at C:\\Elsewhere", .title = "Lodrin"}}));
    EXPECT_TRUE(steps_.empty());
    EXPECT_EQ(dialogs.procMsgs, 0);
}

TEST_F(BuildLDTest, AFileThatIsNoDatabaseIsReportedStepByStep)
{
    fakes.files.Write("C:/Other/Kelvaro.mdb", "");
    BuildLD(shop, "C:\\Other");
    // Both handles, then a table each.
    const std::vector<std::string> reports = Reports();
    ASSERT_EQ(reports.size(), 6U);
    EXPECT_EQ(reports[2], "91 Sub modBuildLD!BuildLD()");
    EXPECT_EQ(reports.back(), "91 Sub modBuildLD!BuildLD()");
    EXPECT_EQ(steps_, kSteps);
    EXPECT_FALSE(dialogs.procMsgVisible);
}

TEST_F(BuildLDTest, NewRowsAreNumberedAndStartWithTheirDefaults)
{
    WithoutOwnTables();
    BuildLD(shop, "C:\\Shop");
    dao::Database database = Reopen();
    for (const char* name : {"LDEmp", "LDTotals", "LDHistory", "Status"}) {
        dao::Recordset rows = database.OpenRecordset(name);
        for (int row = 0; row < 2; ++row) {
            rows.AddNew();
            rows.Update();
        }
    }
    // The second row of each.
    const std::map<std::string, std::vector<Value>> expected{
        {"LDEmp", {2, 0, "", Null{}, Null{}, Null{}, 0, 0, "", "", Null{}, ""}},
        {"LDTotals", {2, 0, Null{}, Null{}, Null{}, 0.0, std::int16_t{0}, 0.0}},
        {"LDHistory", {2, 0, Null{}, Null{}, Null{}, 0, 0, "", 0.0, "", ""}},
        {"Status", {2, "", "", "", ""}}};
    for (const auto& [table, values] : expected) {
        const tests::Record row = Rows(table).at(1);
        const std::vector<dao::FieldDef> fields = database.TableDef(table).Fields();
        ASSERT_EQ(fields.size(), values.size()) << table;
        for (std::size_t at = 0; at < values.size(); ++at)
            EXPECT_EQ(row[fields[at].name], values[at]) << table << "." << fields[at].name;
    }
}

}  // namespace
}  // namespace lodrin
