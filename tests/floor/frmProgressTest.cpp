// SPDX-License-Identifier: Apache-2.0
// frmProgressTest: the dialog in which whoever leaves a job says how far it has come.
#include "floor/frmProgress.h"

#include "app/Dispatch.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::WorkOrder;

class frmProgressTest : public ShopFixture {
protected:
    frmProgressTest()
    {
        Given({RepairOrder(1001).With(WorkOrder::Progress, "Check in"),
               RepairOrder(1002).With(WorkOrder::Progress, "Check in")});
    }

    lodrin::frmProgress& form = shop.forms.progress;

    // Opens the dialog for 1001; what happens in it has been laid down.
    void Show()
    {
        if (!shop.state.database.IsSet()) Open();
        form.lngWOID = EntryOf(1001);
        lodrin::ShowProgress(shop);
    }
    std::string ProgressOf(std::int32_t number) { return Order(number).Text(WorkOrder::Progress); }
};

TEST_F(frmProgressTest, ListHoldsTheProgressTextsInStoredOrderAndProposesTheFirst)
{
    Given({ProgressText("Waiting for parts"), ProgressText("All done")});
    Open();
    form.Form_Load(shop);
    ASSERT_EQ(form.lstProgress.ListCount(), 3);
    EXPECT_EQ(form.lstProgress.List(0), "In the paint booth");
    EXPECT_EQ(form.lstProgress.List(1), "Waiting for parts");
    EXPECT_EQ(form.lstProgress.List(2), "All done");
    EXPECT_EQ(form.lstProgress.ListIndex(), 0);
}

TEST_F(frmProgressTest, LookUpRowsOfAnotherTypeAreNotOffered)
{
    Given({ProgressText("Insurer").With("Type", "Source")});
    Open();
    form.Form_Load(shop);
    EXPECT_EQ(form.lstProgress.ListCount(), 1);
}

TEST_F(frmProgressTest, SecondLoadStartsFromAnEmptyList)
{
    Open();
    form.Form_Load(shop);
    form.Form_Load(shop);
    EXPECT_EQ(form.lstProgress.ListCount(), 1);
}

TEST_F(frmProgressTest, CaptionsStandAsTheyAre)
{
    EXPECT_EQ(form.caption.Caption(), "Update Progress");
    EXPECT_EQ(form.lblProgress.Caption(), "Please update the job progress below.");
    EXPECT_EQ(form.cmdOkay.Caption(), "Okay");
    EXPECT_EQ(form.cmdCancel.Caption(), "Cancel");
}

TEST_F(frmProgressTest, ChosenTextIsWrittenIntoThatOneOrder)
{
    Given({ProgressText("All done")});
    SetsProgress("All done");
    Show();
    EXPECT_EQ(ProgressOf(1001), "All done");
    EXPECT_EQ(ProgressOf(1002), "Check in");
    EXPECT_FALSE(form.isCancelled);
    EXPECT_EQ(shop.state.sqlText,
              "UPDATE Workorder SET Progress = 'All done' WHERE EntryNumber = 6001");
}

TEST_F(frmProgressTest, TextLongerThanFiftyCharactersIsCutToFifty)
{
    const std::string fifty = "12345678901234567890123456789012345678901234567\u00e4\u00f6\u00fc";
    Given({ProgressText(fifty + " and more")});
    SetsProgress(fifty + " and more");
    Show();
    EXPECT_EQ(ProgressOf(1001), fifty);
}

TEST_F(frmProgressTest, WithoutProgressTextsTheListIsEmptyAndConfirmationStoresAnEmptyText)
{
    GivenNo("AutoLook");
    ConfirmsProgress();
    Show();
    EXPECT_EQ(form.lstProgress.ListCount(), 0);
    EXPECT_EQ(Order(1001)[WorkOrder::Progress], "");
    EXPECT_FALSE(form.isCancelled);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmProgressTest, CancelLeavesTheProgressAndTellsTheCaller)
{
    CancelsProgress();
    Show();
    EXPECT_EQ(ProgressOf(1001), "Check in");
    EXPECT_TRUE(form.isCancelled);
}

TEST_F(frmProgressTest, ConfirmationAfterACancelIsNoCancel)
{
    CancelsProgress();
    Show();
    ConfirmsProgress();
    Show();
    EXPECT_FALSE(form.isCancelled);
    EXPECT_EQ(ProgressOf(1001), "In the paint booth");
}

TEST_F(frmProgressTest, CloseBoxOnTheFirstUseWritesNothingAndIsNoCancel)
{
    dialogs.LeaveProgress();
    Show();
    EXPECT_EQ(ProgressOf(1001), "Check in");
    EXPECT_FALSE(form.isCancelled);
}

TEST_F(frmProgressTest, CloseBoxAfterACancelStaysACancel)
{
    CancelsProgress();
    Show();
    dialogs.LeaveProgress();
    Show();
    EXPECT_EQ(ProgressOf(1001), "Check in");
    EXPECT_TRUE(form.isCancelled);
}

TEST_F(frmProgressTest, TextWithAQuoteWritesNothingAndStillConfirms)
{
    Given({ProgressText("Waiting for the customer's call")});
    SetsProgress("Waiting for the customer's call");
    Show();
    EXPECT_EQ(ProgressOf(1001), "Check in");
    EXPECT_FALSE(form.isCancelled);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmProgressTest, MissingDatabaseIsPassedOverInSilence)
{
    Open();
    shop.values.DataPath = "C:\\Elsewhere";
    ConfirmsProgress();
    Show();
    shop.values.DataPath = "C:\\Shop";
    EXPECT_EQ(form.lstProgress.ListCount(), 0);
    EXPECT_EQ(ProgressOf(1001), "Check in");
    EXPECT_FALSE(form.isCancelled);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmProgressTest, OrderNobodyHasIsPassedOver)
{
    Open();
    form.lngWOID = 0;
    const Contents before = Stored();
    ConfirmsProgress();
    lodrin::ShowProgress(shop);
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmProgressTest, ClosedDatabasesLeaveTheMainOneOpen)
{
    ConfirmsProgress();
    Show();
    shop.state.workOrders.FindFirst("WorkOrderNumber = 1002");
    EXPECT_FALSE(shop.state.workOrders.NoMatch());
}

}  // namespace
