// SPDX-License-Identifier: Apache-2.0
// frmGLSelectTest: the dialog in which labor type and department are picked.
#include "floor/frmGLSelect.h"

#include "app/Dispatch.h"
#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;

class frmGLSelectTest : public ShopFixture {
protected:
    lodrin::frmGLSelect& form = shop.forms.glSelect;

    static std::vector<std::string> Entries(const platform::ListBox& list)
    {
        std::vector<std::string> entries;
        for (int index = 0; index < list.ListCount(); ++index)
            entries.push_back(list.List(index));
        return entries;
    }
};

TEST_F(frmGLSelectTest, ListsAreFilledAndTheirFirstEntriesProposed)
{
    Given({ProgressText("Waiting for parts"), Department("Check In", 10)});
    Open();
    form.Form_Load(shop);
    EXPECT_EQ(form.lstGLCodes.List(0), "BL Body Labor");
    EXPECT_EQ(form.lstGLCodes.ListCount(), 7);
    EXPECT_EQ(form.lstGLCodes.ListIndex(), 0);
    EXPECT_EQ(Entries(form.lstDepartments),
              (std::vector<std::string>{"Check In", "Body", "Paint", "Detail"}));
    EXPECT_EQ(form.lstDepartments.ItemData(0), 10);
    EXPECT_EQ(form.lstDepartments.ListIndex(), 0);
    EXPECT_EQ(Entries(form.lstProgress),
              (std::vector<std::string>{"In the paint booth", "Waiting for parts"}));
    EXPECT_EQ(form.lstProgress.ListIndex(), 0);
    EXPECT_EQ(form.lblHelp.Caption(), "Select the desired Labor Type and Department for this "
                                      "entry then press okay.");
    EXPECT_TRUE(form.cmdExit.enabled);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmGLSelectTest, SecondLoadStartsFromEmptyLists)
{
    Open();
    form.Form_Load(shop);
    form.Form_Load(shop);
    EXPECT_EQ(form.lstGLCodes.ListCount(), 7);
    EXPECT_EQ(form.lstDepartments.ListCount(), 3);
    EXPECT_EQ(form.lstProgress.ListCount(), 1);
}

TEST_F(frmGLSelectTest, WithoutDescriptionsTheLedgersLaborAccountsAreOffered)
{
    GivenNo("Status").Given(
        {LedgerAccount("RL", "Refinish", true), LedgerAccount("BL", "Body", true),
         LedgerAccount("4000", "Parts", false), LedgerAccount("", "Nameless", true)});
    Open();
    form.Form_Load(shop);
    EXPECT_EQ(Entries(form.lstGLCodes), (std::vector<std::string>{"BL Body", "RL Refinish"}));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmGLSelectTest, DescriptionsWithoutCodeAreSkipped)
{
    GivenNo("Status").Given({LaborType("", "No code"),
                             LaborType("BL", "Body").With(lodrin::Status::GLType, base::Null{}),
                             LaborType("RL", "Refinish")});
    Open();
    form.Form_Load(shop);
    EXPECT_EQ(Entries(form.lstGLCodes), (std::vector<std::string>{"RL Refinish"}));
}

TEST_F(frmGLSelectTest, WithoutProgressTextsTheirListIsEmptyAndNothingIsReported)
{
    GivenNo("AutoLook");
    Open();
    form.Form_Load(shop);
    EXPECT_EQ(form.lstProgress.ListCount(), 0);
    EXPECT_EQ(form.lstProgress.ListIndex(), -1);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmGLSelectTest, WithoutDescriptionSetTheLaborTypesStayEmptyAndThatIsReported)
{
    Open();
    shop.state.rsStatus = dao::Recordset();
    form.Form_Load(shop);
    EXPECT_EQ(form.lstGLCodes.ListCount(), 0);
    EXPECT_FALSE(form.cmdExit.enabled);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"380 Sub frmGLSelect!Form_Load()"}));
}

TEST_F(frmGLSelectTest, ConfirmationFillsTheSelectionValues)
{
    Given({Employee("Jones, Bob", 8)});
    Open();
    dialogs.Pick("RL", "Paint");
    lodrin::ShowGLSelect(shop);
    EXPECT_EQ(shop.state.GLCode, "RL");
    EXPECT_EQ(shop.state.GLDesc, "Refinish Labor");
    EXPECT_EQ(shop.state.Department, "Paint");
    EXPECT_EQ(shop.state.Sequence, 70);
    EXPECT_TRUE(dialogs.focusOnGLCodes);
}

TEST_F(frmGLSelectTest, EmptyDescriptionStillYieldsTheCode)
{
    GivenNo("Status").Given({LaborType("BL", "")});
    Open();
    shop.state.GLDesc = "former";
    dialogs.Pick("BL", "Paint");
    lodrin::ShowGLSelect(shop);
    EXPECT_EQ(shop.state.GLCode, "BL");
    EXPECT_EQ(shop.state.GLDesc, "");
}

TEST_F(frmGLSelectTest, OnlyTheFirstBlankSplits)
{
    GivenNo("Status").Given({LaborType("BL", "Body and  more")});
    Open();
    dialogs.Pick("BL", "Paint");
    lodrin::ShowGLSelect(shop);
    EXPECT_EQ(shop.state.GLCode, "BL");
    EXPECT_EQ(shop.state.GLDesc, "Body and  more");
}

TEST_F(frmGLSelectTest, LeavingByTheCloseBoxWritesNothing)
{
    Open();
    dialogs.Leave();
    lodrin::ShowGLSelect(shop);
    EXPECT_EQ(shop.state.GLCode, "");
    EXPECT_EQ(shop.state.Department, "");
}

TEST_F(frmGLSelectTest, OkayWaitsUntilBothListsHaveASelection)
{
    GivenNo("Departments");
    Open();
    form.Form_Load(shop);
    EXPECT_FALSE(form.cmdExit.enabled);
    form.cmdExit_Click(shop);
    EXPECT_EQ(shop.state.GLCode, "");
    form.lstDepartments.AddItem("Body", 30);
    form.lstDepartments.SetListIndex(0);
    form.SelectionChanged();
    EXPECT_TRUE(form.cmdExit.enabled);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmGLSelectTest, DepartmentBeyondSixteenBitsIsToldAndTheDialogStays)
{
    GivenNo("Departments").Given({Department("Body", 32767)});
    Open();
    form.Form_Load(shop);
    form.lstDepartments.AddItem("Yard", 32768);
    form.lstDepartments.AddItem("Cellar", -32769);
    bool closed = false;
    form.close = [&] { closed = true; };
    for (const int beyond : {1, 2}) {
        form.lstDepartments.SetListIndex(beyond);
        fakes.prompts.Expect(
            "This department cannot be chosen: its sequence in the management system is beyond the "
            "numbers that a repair order can hold.\r\n\r\nChoose another department, or have its "
            "sequence corrected.");
        form.cmdExit_Click(shop);
        EXPECT_FALSE(closed);
        EXPECT_EQ(shop.state.GLCode, "");
        EXPECT_EQ(shop.state.GLDesc, "");
        EXPECT_EQ(shop.state.Department, "");
        EXPECT_EQ(shop.state.Sequence, 0);
    }

    form.lstDepartments.SetListIndex(0);
    form.cmdExit_Click(shop);
    EXPECT_TRUE(closed);
    EXPECT_EQ(shop.state.Sequence, 32767);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmGLSelectTest, ClosedDatabasesLeaveTheMainOneOpen)
{
    Given({RepairOrder(1001)});
    Open();
    form.Form_Load(shop);
    EXPECT_FALSE(shop.state.workOrders.Bof());
    shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
    EXPECT_FALSE(shop.state.workOrders.NoMatch());
}

TEST_F(frmGLSelectTest, MissingDatabaseIsReportedStepByStep)
{
    Open();
    shop.values.DataPath = "C:\\Elsewhere";
    form.Form_Load(shop);
    EXPECT_EQ(form.lstGLCodes.ListCount(), 7);
    EXPECT_EQ(form.lstDepartments.ListCount(), 0);
    EXPECT_FALSE(form.cmdExit.enabled);
    EXPECT_EQ(form.lblHelp.Caption().substr(0, 6), "Select");
    for (const std::string& report : Reports())
        EXPECT_NE(report.find("Sub frmGLSelect!Form_Load()"), std::string::npos) << report;
    EXPECT_GE(Reports().size(), 6U);
}

}  // namespace
