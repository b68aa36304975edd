// SPDX-License-Identifier: Apache-2.0
#include "data/SyncEmployees.h"

#include "tests/support/ShopFixture.h"
#include "tests/support/StartTexts.h"

namespace lodrin {
namespace {

using base::Value;
using tests::Employee;
using tests::kEmployeesAdded;
using tests::kNothingToSynchronise;
using tests::ShopEntry;

constexpr const char* kAllEmployees = "SELECT * FROM LDEmp ORDER BY EmpEntry";

// A profile that the board does not know yet.
ShopEntry Newcomer(const std::string& name, std::int32_t id)
{
    return Employee(name, id).Without("LDEmp");
}

// A row of the board whose profile is gone.
ShopEntry Leaver(const std::string& name, std::int32_t id)
{
    return Employee(name, id).Without("Profile");
}

class SyncEmployeesTest : public tests::ShopFixture {
protected:
    void Synchronise(const char* report)
    {
        Open();
        platform::Label& label = shop.forms.procMsg.Label1;
        label.changed = [this, &label] {
            EXPECT_TRUE(dialogs.procMsgVisible);
            steps_.push_back(label.Caption());
        };
        fakes.prompts.Expect(report);
        mnuSyncEmp_Click(shop);
        EXPECT_FALSE(dialogs.procMsgVisible);
        EXPECT_EQ(fakes.prompts.boxes.back(), (platform::Box{.text = report, .title = "Lodrin"}));
    }
    std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (const tests::Record& row : Rows(kAllEmployees))
            names.push_back(row.Text("EmpID") + " " + row.Text("Name"));
        return names;
    }

    std::vector<std::string> steps_;
};

using NameList = std::vector<std::string>;

TEST_F(SyncEmployeesTest, AProfileWithoutARowIsAddedUnderItsDisplayName)
{
    Given({Newcomer("Smith, Ann", 7)});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(Names(), (NameList{"7 Smith, Ann"}));
    EXPECT_EQ(steps_, (NameList{"Synchronizing LD - Preparing to execute process",
                                "Synchronizing LD - Adding employee: Ann Smith"}));
}

TEST_F(SyncEmployeesTest, AnAddedRowKeepsTheDefaultsOfItsOtherFields)
{
    Given({Newcomer("Smith, Ann", 7)});
    Synchronise(kEmployeesAdded);
    const tests::Record row = EmployeeRecord("Smith, Ann");
    EXPECT_EQ(row["StartDay"], Value(base::Null{}));
    EXPECT_EQ(row["WO#"], Value(0));
    EXPECT_EQ(row["Customer"], Value(""));
}

TEST_F(SyncEmployeesTest, WithoutEmployeeProfilesNothingIsDeleted)
{
    Given({Leaver("Smith, Ann", 7), Newcomer("Body, Shop", 50).With("Type", "Vendor")});
    const tests::Contents before = Stored();
    Synchronise(kNothingToSynchronise);
    EXPECT_EQ(Stored(), before);
}

TEST_F(SyncEmployeesTest, ProfilesOutOfReachEmptyNoBoard)
{
    Given({Employee("Smith, Ann", 7)});
    Open();
    // The set of employees lives on.
    const dao::Database kept = std::move(shop.state.database);
    shop.state.database = dao::Database();
    fakes.prompts.Expect(kNothingToSynchronise);
    SyncEmployees(shop);
    EXPECT_EQ(Names(), (NameList{"7 Smith, Ann"}));
    EXPECT_FALSE(dialogs.procMsgVisible);
}

TEST_F(SyncEmployeesTest, RowsThatAreRightAreLeftAloneAndNothingFoundIsReported)
{
    Given({Employee("Smith, Ann", 7), Employee("Jones, Bob", 8)});
    const tests::Contents before = Stored();
    Synchronise(kNothingToSynchronise);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(steps_, (NameList{"Synchronizing LD - Preparing to execute process",
                                "Synchronizing LD - Processing employees",
                                "Synchronizing LD - Processing employees"}));
}

TEST_F(SyncEmployeesTest, ARowWhoseProfileIsGoneIsDeletedAndStillNothingFoundIsReported)
{
    Given({Employee("Smith, Ann", 7), Leaver("Jones, Bob", 8), Employee("Adams, Zoe", 9)});
    Synchronise(kNothingToSynchronise);
    EXPECT_EQ(Names(), (NameList{"7 Smith, Ann", "9 Adams, Zoe"}));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(SyncEmployeesTest, AHiddenRowIsNotFoundSoASecondOneIsAddedAndTheHiddenOneStays)
{
    Given({Newcomer("Smith, Ann", 7),
           ShopEntry({{"LDEmp", {{"EmpID", 7}, {"Name", "@Smith, Ann"}}}}),
           ShopEntry({{"LDEmp", {{"EmpID", 99}, {"Name", "@Office"}}}})});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(Names(), (NameList{"7 @Smith, Ann", "99 @Office", "7 Smith, Ann"}));
}

TEST_F(SyncEmployeesTest, AProfileWhoseNameHidesItselfIsAddedAgainAtEverySynchronisation)
{
    Given({Newcomer("@Smith, Ann", 7)});
    Synchronise(kEmployeesAdded);
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(Names(), (NameList{"7 @Smith, Ann", "7 @Smith, Ann"}));
}

TEST_F(SyncEmployeesTest, AddedRowsSurviveTheRemovalPass)
{
    Given({Newcomer("Smith, Ann", 7), Newcomer("Jones, Bob", 8), Leaver("Gone, Guy", 9)});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(Names(), (NameList{"8 Jones, Bob", "7 Smith, Ann"}));
}

TEST_F(SyncEmployeesTest, AChangeOfCaseOrBlanksRewritesTheName)
{
    Given({Employee("Smith, Ann", 7).With("Name", "SMITH, Ann"),
           Employee("Jones, Bob", 8).With("Name", "Jones,  Bob")});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(Names(), (NameList{"7 Smith, Ann", "8 Jones, Bob"}));
}

TEST_F(SyncEmployeesTest, AWorkingDayGoesOnUnderTheNewName)
{
    Given({Employee("Smith, Ann", 7).With("Name", "Smyth, Ann").With("Customer", "Customer 1001")});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(EmployeeRecord("Smith, Ann").Text("Customer"), "Customer 1001");
}

TEST_F(SyncEmployeesTest, AMissingFirstNameLeavesTheCommaAndTheBlank)
{
    Given({Newcomer("Smith", 7).With("FirstName", base::Null{})});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(Names(), (NameList{"7 Smith, "}));
}

TEST_F(SyncEmployeesTest, ARowWithoutANumberIsNotDeletedOnTheAnswerToAnotherSearch)
{
    Given({Employee("Adams, Zoe", 9)});
    Given({ShopEntry({{"LDEmp", {{"EmpID", base::Null{}}, {"Name", "Nobody"}}}})});
    Synchronise(kNothingToSynchronise);
    // A row without a number has no profile to be searched for, and stays.
    EXPECT_EQ(Names(), (NameList{"9 Adams, Zoe", " Nobody"}));
    EXPECT_EQ(Reports(), (NameList{"3077 Sub frmLodrin!SyncEmployees()"}));
}

TEST_F(SyncEmployeesTest, TheBoardIsNotRebuilt)
{
    Given({Employee("Smith, Ann", 7), Newcomer("Jones, Bob", 8)});
    Synchronise(kEmployeesAdded);
    EXPECT_EQ(shop.window.grdEmp.RowCount(), 1);
}

}  // namespace
}  // namespace lodrin
