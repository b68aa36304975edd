// SPDX-License-Identifier: Apache-2.0
// cmdBreakTest: a technician leaves his job and stays in his day.
#include "labor/cmdBreak.h"

#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::WorkOrder;

constexpr const char* kUnknownOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

class cmdBreakTest : public ShopFixture {
protected:
    // Ann has PIN 77. Bob has body work open on 1001 since eight.
    void BobWorks()
    {
        Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7).With("PIN", "77"),
               RepairOrder(1001), RepairOrder(1002), ProgressText("All done")});
        At("08:00 AM").Select("Jones, Bob").Picks("BL", "Body").Starts(1001);
        At("10:20 AM");
    }
    void AnnWorks()
    {
        BobWorks();
        Select("Smith, Ann").Types("77").Picks("RL", "Paint").Starts(1002);
        At("11:20 AM");
    }
};

TEST_F(cmdBreakTest, OpenJobIsRecordedAndPostedToItsOwnOrder)
{
    BobWorks();
    SetsProgress("All done").GoesOnBreak();
    const std::vector<Record> jobs = Jobs();
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0][LDHistory::EmpID], 8);
    EXPECT_EQ(jobs[0].Text(LDHistory::JobStart), "8:00:00 AM");
    EXPECT_EQ(jobs[0].Text(LDHistory::JobEnd), "10:20:00 AM");
    EXPECT_EQ(jobs[0][LDHistory::WOID], EntryOf(1001));
    EXPECT_EQ(jobs[0][LDHistory::Hrs], 2.33);
    EXPECT_EQ(LaborLines().size(), 1U);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 2.33);
    EXPECT_EQ(Order(1001)[WorkOrder::Progress], "All done");
    EXPECT_EQ(Order(1002)[WorkOrder::BodyWorked], 0.0);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cmdBreakTest, RecordHoldsNoJobAndTheDayIsStillOpen)
{
    BobWorks();
    ConfirmsProgress().GoesOnBreak();
    const Record bob = EmployeeRecord("Jones, Bob");
    EXPECT_EQ(bob[LDEmp::VehDesc.name], "");
    EXPECT_EQ(bob[LDEmp::Customer.name], "");
    EXPECT_EQ(bob[LDEmp::GLType.name], "");
    for (const auto& field : {LDEmp::WONumber, LDEmp::WOID, LDEmp::StartJob, LDEmp::EndDay})
        EXPECT_TRUE(bob[field.name].IsNull()) << field.name;
    EXPECT_EQ(bob.Text(LDEmp::StartDay.name), "8:00:00 AM");
    EXPECT_EQ(bob.Text(LDEmp::WorkDate.name), "3/15/2004");
    EXPECT_TRUE(Totals().empty());
}

TEST_F(cmdBreakTest, BoardRowShowsNoJobAndTheStartOfDayUnchanged)
{
    BobWorks();
    ConfirmsProgress().GoesOnBreak();
    for (const auto& field : {LDEmp::VehDesc, LDEmp::Customer, LDEmp::WONumber, LDEmp::WOID,
                              LDEmp::GLType, LDEmp::StartJob})
        EXPECT_EQ(Board("Jones, Bob", field), "") << field.name;
    EXPECT_EQ(Board("Jones, Bob", LDEmp::StartDay), "08:00 AM");
    EXPECT_EQ(shop.window.grdDaily.RowCount(), 1);
    EXPECT_FALSE(shop.window.grdEmp.allowEdit);
}

TEST_F(cmdBreakTest, BreakWithoutAnOpenJobWritesAndSaysNothingAfterTheDialog)
{
    BobWorks();
    ConfirmsProgress().GoesOnBreak();
    const Contents before = Stored();
    At("10:40 AM").ConfirmsProgress().GoesOnBreak();
    EXPECT_EQ(dialogs.progresses, 2);
    EXPECT_EQ(shop.forms.progress.lngWOID, 0);
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cmdBreakTest, OrderDeletedMeanwhileIsToldAndTheJobStaysOpen)
{
    BobWorks();
    Loses("WorkOrder", "WorkOrderNumber = 1001");
    const Contents before = Stored();
    fakes.prompts.Expect(kUnknownOrder);
    ConfirmsProgress().GoesOnBreak();
    EXPECT_EQ(fakes.prompts.boxes.back(),
              (platform::Box{.text = kUnknownOrder, .title = "Lodrin"}));
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Board("Jones, Bob", LDEmp::WONumber), "1001");
}

// An order the list no longer shows after it was read again.
class LostOrderTest : public cmdBreakTest,
                      public ::testing::WithParamInterface<std::pair<const char*, base::Value>> {};

INSTANTIATE_TEST_SUITE_P(Orders, LostOrderTest,
                         ::testing::Values(std::pair{"Archived", base::Value(true)},
                                           std::pair{"WOType", base::Value("Invoice")}),
                         [](const auto& each) { return each.param.first; });

TEST_P(LostOrderTest, OrderOutOfTheListIsToldAndTheJobStaysOpen)
{
    BobWorks();
    Changes("WorkOrder", "WorkOrderNumber = 1001", GetParam().first, GetParam().second);
    Open().Select("Jones, Bob");
    const Contents before = Stored();
    fakes.prompts.Expect(kUnknownOrder);
    SetsProgress("In the paint booth").GoesOnBreak();
    // He gave the progress before the order was looked for.
    EXPECT_EQ(Order(1001)[WorkOrder::Progress], "In the paint booth");
    Changes("WorkOrder", "WorkOrderNumber = 1001", WorkOrder::Progress,
            before.at("WorkOrder").at(0)[WorkOrder::Progress]);
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdBreakTest, JobWithoutCustomerIsClearedWithoutHistoryOrLabor)
{
    Given({Employee("Jones, Bob", 8)
               .With(LDEmp::StartDay.name, base::Date{8.0 / 24})
               .With(LDEmp::StartJob.name, base::Date{8.0 / 24})
               .With(LDEmp::WONumber.name, 1001)
               .With(LDEmp::WOID.name, EntryOf(1001))
               .With(LDEmp::VehDesc.name, "1999 Ford"),
           RepairOrder(1001)});
    At("09:00 AM").Select("Jones, Bob").ConfirmsProgress().GoesOnBreak();
    EXPECT_TRUE(Jobs().empty());
    EXPECT_TRUE(LaborLines().empty());
    const Record bob = EmployeeRecord("Jones, Bob");
    EXPECT_TRUE(bob[LDEmp::WOID.name].IsNull());
    EXPECT_EQ(bob[LDEmp::VehDesc.name], "");
}

TEST_F(cmdBreakTest, WrongPinIsRefusedInSilenceBeforeTheDialog)
{
    AnnWorks();
    const Contents before = Stored();
    Types("78").GoesOnBreak();
    EXPECT_EQ(dialogs.progresses, 0);
    EXPECT_TRUE(fakes.prompts.boxes.empty());
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdBreakTest, CancelledDialogChangesNothing)
{
    AnnWorks();
    const Contents before = Stored();
    Types("77").CancelsProgress().GoesOnBreak();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Board("Smith, Ann", LDEmp::WONumber), "1002");
}

TEST_F(cmdBreakTest, CloseBoxAfterAConfirmedDialogGoesOnBreakWithoutNewProgress)
{
    BobWorks();
    dialogs.LeaveProgress();
    GoesOnBreak();
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_TRUE(Order(1001)[WorkOrder::Progress].IsNull());
}

TEST_F(cmdBreakTest, CloseBoxAfterACancelledDialogStops)
{
    BobWorks();
    CancelsProgress().GoesOnBreak();
    dialogs.LeaveProgress();
    GoesOnBreak();
    EXPECT_TRUE(Jobs().empty());
    EXPECT_EQ(Board("Jones, Bob", LDEmp::WONumber), "1001");
}

TEST_F(cmdBreakTest, BreakWithinTheMinuteOfTheStartLeavesNoHistory)
{
    BobWorks();
    At("08:00 AM").ConfirmsProgress().GoesOnBreak();
    EXPECT_TRUE(Jobs().empty());
    EXPECT_EQ(Board("Jones, Bob", LDEmp::WONumber), "");
}

TEST_F(cmdBreakTest, NextJobOfTheSameOrderGoesOnAfterTheBreak)
{
    BobWorks();
    ConfirmsProgress().GoesOnBreak();
    At("10:40 AM").Picks("BL", "Body").Starts(1001);
    At("11:40 AM").ConfirmsProgress().GoesOnBreak();
    ASSERT_EQ(Jobs().size(), 2U);
    EXPECT_EQ(Jobs()[1][LDHistory::Hrs], 1.0);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 3.33);
    EXPECT_EQ(Board("Jones, Bob", LDEmp::StartDay), "08:00 AM");
}

TEST_F(cmdBreakTest, EmptyBoardIsLeftInSilence)
{
    Open();
    GoesOnBreak();
    EXPECT_EQ(dialogs.progresses, 0);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cmdBreakTest, FailuresAreReportedUnderItsName)
{
    BobWorks();
    shop.state.employees = dao::Recordset();
    ConfirmsProgress().GoesOnBreak();
    EXPECT_EQ(Reports(), std::vector<std::string>{"91 Sub frmLodrin!cmdBreak_Click()"});
    EXPECT_EQ(Jobs().size(), 1U);
}

}  // namespace
