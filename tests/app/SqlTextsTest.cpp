// SPDX-License-Identifier: Apache-2.0
// SqlTextsTest: what the procedures ask of the database, word by word and in their order.
#include "app/frmLodrin.h"
#include "floor/frmGLSelect.h"
#include "jet/io/MemoryFile.h"
#include "setup/frmStatus.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/WatchedFileSystem.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace tests;
using Texts = std::vector<std::string>;

// Looks at the shared text each time the engine turns to the file or the board changes.
class SqlTextsTest : public ::testing::Test {
protected:
    SqlTextsTest()
    {
        world.fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
        world.fakes.files.Write("C:/Shop/Kelvaro.mdb", "");
        world.MakeDatabase();
    }
    void TearDown() override
    {
        disk.beforeCall = nullptr;
        EXPECT_SPOTLESS(memory, world.DatabasePath());
    }

    void Watch()
    {
        texts.clear();
        const auto look = [this] {
            const std::string& text = world.shop.state.sqlText;
            if (!text.empty() && (texts.empty() || texts.back() != text)) texts.push_back(text);
        };
        disk.beforeCall = look;
        // One text is kept and never run: it stands while the board is filled.
        world.shop.window.grdEmp.changed = look;
    }
    // What was asked since.
    [[nodiscard]] Texts Asked()
    {
        disk.beforeCall = nullptr;
        return texts;
    }

    jet::io::MemoryFileSystem memory;
    WatchedFileSystem disk{memory};
    ShopWorld world{disk};
    Texts texts;
};

TEST_F(SqlTextsTest, StartOfTheProgramWithADayThatWasForgotten)
{
    constexpr double kFriday = 38058;
    world.Given({Employee("Smith, Ann", 7)
                     .With("WorkDate", base::Date{kFriday})
                     .With("StartDay", base::Date{0.25})
                     .With("StartJob", base::Date{0.5}),
                 RepairOrder(1001)});
    world.fakes.prompts.TakeAnyBox();
    Watch();
    lodrin::Form_Load(world.shop);
    EXPECT_EQ(
        Asked(),
        (Texts{"SELECT * FROM LDEmp WHERE LEFT(Name,1) <> '@' ORDER BY Name",
               "SELECT * FROM LDHistory", "SELECT * FROM Profile WHERE ProfileNumber = 7",
               "SELECT Count(ID) as JobCt, Sum(Hrs) as JobHrs FROM LDHistory WHERE EmpID = 7 AND "
               "WorkDate = #3/12/2004#",
               "SELECT * FROM LDTotals WHERE EmpID = 7 AND WorkDate = #3/12/2004#",
               "SELECT * FROM Profile WHERE Type = 'Employee' ORDER BY LastName",
               "SELECT * FROM LDEmp ORDER BY LastName",
               "SELECT * FROM WorkOrder WHERE WOType In('WorkOrder', 'Estimate') AND Archived = "
               "FALSE ORDER BY WorkOrderNumber",
               "SELECT * FROM LDHistory WHERE EmpID = -1 AND WorkDate = #3/15/2004# ORDER BY "
               "JobStart DESC;",
               "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType"}));
}

TEST_F(SqlTextsTest, ChangeOfTheJob)
{
    world.Given({Employee("Jones, Bob", 8), RepairOrder(1001), RepairOrder(1002)});
    world.At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    world.At("09:00 AM").Picks("RL", "Paint");
    Watch();
    world.Starts(1002);
    EXPECT_EQ(Asked(), (Texts{"SELECT PIN FROM Profile WHERE ProfileNumber = 8",
                              "SELECT * FROM Departments ORDER BY Sequence ASC;",
                              "SELECT * FROM AutoLook WHERE Type = 'Progress';",
                              "SELECT * FROM Profile WHERE ProfileNumber = 8",
                              "SELECT * FROM LDHistory WHERE EmpID = 8 AND WorkDate = #3/15/2004# "
                              "ORDER BY JobStart DESC;",
                              "SELECT * FROM LDHistory WHERE EmpID = 8"}));
}

TEST_F(SqlTextsTest, LaborTypesOfTheLedger)
{
    world.GivenNo("Status").Open();
    Watch();
    world.shop.forms.glSelect.Form_Load(world.shop);
    const Texts asked = Asked();
    ASSERT_FALSE(asked.empty());
    EXPECT_NE(std::find(asked.begin(), asked.end(),
                        "SELECT * FROM GenLedger WHERE GLLaborFlag = True ORDER BY GLCode;"),
              asked.end());
}

TEST_F(SqlTextsTest, EndOfTheDay)
{
    world.Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    world.At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    world.At("04:30 PM").IsSure().ConfirmsProgress();
    Watch();
    world.EndsDay();
    EXPECT_EQ(
        Asked(),
        (Texts{"SELECT PIN FROM Profile WHERE ProfileNumber = 8",
               "SELECT * FROM AutoLook WHERE Type = 'Progress';",
               "UPDATE Workorder SET Progress = 'In the paint booth' WHERE EntryNumber = 6001",
               "SELECT * FROM Profile WHERE ProfileNumber = 8",
               "SELECT * FROM LDHistory WHERE EmpID = 8 AND WorkDate = #3/15/2004# ORDER BY "
               "JobStart DESC;",
               "SELECT * FROM LDHistory WHERE EmpID = 8",
               "SELECT Count(ID) as JobCt, Sum(Hrs) as JobHrs FROM LDHistory WHERE EmpID = 8 AND "
               "WorkDate = #3/15/2004#",
               "SELECT * FROM LDTotals WHERE EmpID = 8 AND WorkDate = #3/15/2004#"}));
}

TEST_F(SqlTextsTest, StatusDescriptions)
{
    lodrin::frmStatus form;
    world.GivenNo("Status").Given({LedgerAccount("BL", "Body Labor", true)}).Open();
    disk.beforeCall = [&] {
        if (!form.sqlText.empty() && (texts.empty() || texts.back() != form.sqlText))
            texts.push_back(form.sqlText);
    };
    form.Form_Load(world.shop);
    EXPECT_EQ(Asked(),
              (Texts{"SELECT * FROM GenLedger WHERE GLLaborFlag = True ORDER BY GLCode",
                     "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType",
                     "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType;"}));
}

}  // namespace
