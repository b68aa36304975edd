// SPDX-License-Identifier: Apache-2.0
// cmdEndDayTest: a technician's day is closed and added up.
#include "labor/cmdEndDay.h"

#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::LDTotals;
using lodrin::WorkOrder;
using platform::Answer;

constexpr const char* kAreYouSure = "This will close out your time for today.  Are you sure?";
constexpr const char* kUnknownOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

class cmdEndDayTest : public ShopFixture {
protected:
    // Ann (PIN 77) has body work open on 1001 since seven; at half past three she goes home.
    void AnnWorks()
    {
        Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7).With("PIN", "77"),
               RepairOrder(1001), RepairOrder(1002), ProgressText("All done")});
        At("07:00 AM").Select("Smith, Ann").Types("77").Picks("BL", "Body").Starts(1001);
        At("03:30 PM");
    }
    void EndsUnattended()
    {
        shop.state.automaticEndOfDay = true;
        lodrin::cmdEndDay_Click(shop);
        shop.state.automaticEndOfDay = false;
    }
};

TEST_F(cmdEndDayTest, JobIsClosedDayStampedAndTotalsWritten)
{
    AnnWorks();
    IsSure().Types("77").SetsProgress("All done").EndsDay();
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0][LDHistory::Hrs], 8.5);
    EXPECT_EQ(LaborLines().size(), 1U);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 8.5);
    EXPECT_EQ(Order(1001)[WorkOrder::Progress], "All done");
    const Record ann = EmployeeRecord("Smith, Ann");
    EXPECT_EQ(ann.Text(LDEmp::EndDay.name), "3:30:00 PM");
    EXPECT_EQ(ann.Text(LDEmp::StartDay.name), "7:00:00 AM");
    EXPECT_EQ(ann.Text(LDEmp::WorkDate.name), "3/15/2004");
    for (const auto& field : {LDEmp::WONumber, LDEmp::WOID, LDEmp::StartJob})
        EXPECT_TRUE(ann[field.name].IsNull()) << field.name;
    for (const auto& field : {LDEmp::VehDesc, LDEmp::Customer, LDEmp::GLType})
        EXPECT_EQ(ann[field.name], "") << field.name;
    EXPECT_EQ(Totals().size(), 1U);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cmdEndDayTest, JobJustClosedIsCountedInTheTotals)
{
    AnnWorks();
    IsSure().Types("77").ConfirmsProgress().EndsDay();
    ASSERT_EQ(Totals().size(), 1U);
    EXPECT_EQ(Totals()[0].Text(LDTotals::JobCount), "1");
    EXPECT_EQ(Totals()[0].Text(LDTotals::JobHrs), "8.5");
}

TEST_F(cmdEndDayTest, BoardShowsTheEndOfTheDayAndNoJob)
{
    AnnWorks();
    IsSure().Types("77").ConfirmsProgress().EndsDay();
    EXPECT_EQ(Board("Smith, Ann", LDEmp::EndDay), "03:30 PM");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::StartDay), "07:00 AM");
    for (const auto& field : {LDEmp::VehDesc, LDEmp::Customer, LDEmp::WONumber, LDEmp::WOID,
                              LDEmp::GLType, LDEmp::StartJob})
        EXPECT_EQ(Board("Smith, Ann", field), "") << field.name;
}

TEST_F(cmdEndDayTest, QuestionIsAskedWithItsTitleAndYesAndNo)
{
    AnnWorks();
    IsSure(Answer::No).EndsDay();
    EXPECT_EQ(fakes.prompts.boxes.back(), (platform::Box{.text = kAreYouSure,
                                                         .title = "End Of Day",
                                                         .buttons = platform::Buttons::YesNo}));
}

TEST_F(cmdEndDayTest, NoToTheQuestionChangesNothingAndAsksNoPin)
{
    AnnWorks();
    const Contents before = Stored();
    const std::size_t asked = fakes.prompts.inputs.size();
    IsSure(Answer::No).EndsDay();
    EXPECT_EQ(fakes.prompts.inputs.size(), asked);
    EXPECT_EQ(dialogs.progresses, 0);
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdEndDayTest, WrongPinChangesNothing)
{
    AnnWorks();
    const Contents before = Stored();
    IsSure().Types("78").EndsDay();
    EXPECT_EQ(dialogs.progresses, 0);
    EXPECT_EQ(fakes.prompts.boxes.size(), 1U);
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdEndDayTest, CancelledDialogChangesNothing)
{
    AnnWorks();
    const Contents before = Stored();
    IsSure().Types("77").CancelsProgress().EndsDay();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Board("Smith, Ann", LDEmp::EndDay), "");
}

TEST_F(cmdEndDayTest, EmployeeOnBreakCannotEndHisDayAndIsTold)
{
    AnnWorks();
    Types("77").ConfirmsProgress().GoesOnBreak();
    const Contents before = Stored();
    IsSure().Types("77").ConfirmsProgress();
    fakes.prompts.Expect(kUnknownOrder);
    EndsDay();
    EXPECT_EQ(fakes.prompts.boxes.back(),
              (platform::Box{.text = kUnknownOrder, .title = "Lodrin"}));
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cmdEndDayTest, OrderDeletedMeanwhileIsToldAndNothingIsWritten)
{
    AnnWorks();
    Loses("WorkOrder", "WorkOrderNumber = 1001");
    const Contents before = Stored();
    fakes.prompts.Expect(kUnknownOrder);
    EndsUnattended();
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdEndDayTest, OrderArchivedMeanwhileIsToldAndNothingIsWritten)
{
    AnnWorks();
    Changes("WorkOrder", "WorkOrderNumber = 1001", "Archived", true);
    Open().Select("Smith, Ann");
    const Contents before = Stored();
    fakes.prompts.Expect(kUnknownOrder);
    EndsUnattended();
    EXPECT_EQ(Stored(), before);
}

// He gives the progress before the order is looked for, so an order that left the list keeps it.
TEST_F(cmdEndDayTest, OrderArchivedMeanwhileKeepsTheProgressHeGaveAndNothingElseIsWritten)
{
    AnnWorks();
    Changes("WorkOrder", "WorkOrderNumber = 1001", "Archived", true);
    Open().Select("Smith, Ann");
    const Contents before = Stored();
    IsSure().Types("77").SetsProgress("In the paint booth");
    fakes.prompts.Expect(kUnknownOrder);
    EndsDay();
    EXPECT_EQ(Order(1001)[WorkOrder::Progress], "In the paint booth");
    Changes("WorkOrder", "WorkOrderNumber = 1001", WorkOrder::Progress,
            before.at("WorkOrder").at(0)[WorkOrder::Progress]);
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdEndDayTest, OrderDeletedMeanwhileIsToldToTheManAtTheButtonToo)
{
    AnnWorks();
    Loses("WorkOrder", "WorkOrderNumber = 1001");
    const Contents before = Stored();
    IsSure().Types("77").ConfirmsProgress();
    fakes.prompts.Expect(kUnknownOrder);
    EndsDay();
    EXPECT_EQ(Stored(), before);
}

TEST_F(cmdEndDayTest, UnattendedEndAsksNeitherQuestionNorPinNorProgress)
{
    AnnWorks();
    const std::size_t asked = fakes.prompts.Transcript().size();
    EndsUnattended();
    EXPECT_EQ(fakes.prompts.Transcript().size(), asked);
    EXPECT_EQ(dialogs.progresses, 0);
    EXPECT_EQ(Board("Smith, Ann", LDEmp::EndDay), "03:30 PM");
    EXPECT_EQ(Totals().size(), 1U);
}

TEST_F(cmdEndDayTest, UnattendedEndShowsItsBoxWhenTheOrderIsGone)
{
    Given({Employee("Jones, Bob", 8).With(LDEmp::StartDay.name, base::Date{8.0 / 24})});
    At("05:00 PM").Select("Jones, Bob");
    fakes.prompts.Expect(kUnknownOrder);
    EndsUnattended();
    EXPECT_TRUE(EmployeeRecord("Jones, Bob")[LDEmp::EndDay.name].IsNull());
}

TEST_F(cmdEndDayTest, DayEndedTwiceLeavesOneTotalsRowWithTheSecondFigures)
{
    AnnWorks();
    IsSure().Types("77").ConfirmsProgress().EndsDay();
    At("04:00 PM").Types("77").Picks("RL", "Paint").Starts(1002);
    At("05:00 PM").IsSure().Types("77").ConfirmsProgress().EndsDay();
    const std::vector<Record> totals = Totals();
    ASSERT_EQ(totals.size(), 1U);
    EXPECT_EQ(totals[0].Text(LDTotals::EndDay), "5:00:00 PM");
    EXPECT_EQ(totals[0].Text(LDTotals::TotHrs), "10");
    EXPECT_EQ(totals[0].Text(LDTotals::JobCount), "2");
    EXPECT_EQ(totals[0].Text(LDTotals::JobHrs), "9.5");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::EndDay), "05:00 PM");
}

TEST_F(cmdEndDayTest, VanishedEmployeeRecordStillGetsHisTotals)
{
    AnnWorks();
    Loses("LDEmp", "EmpID = 7");
    EndsUnattended();
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Board("Smith, Ann", LDEmp::WONumber), "1001");
    ASSERT_EQ(Totals().size(), 1U);
    EXPECT_EQ(Totals()[0].Text(LDTotals::JobHrs), "8.5");
    EXPECT_TRUE(Totals()[0][LDTotals::EndDay].IsNull());
}

// What he works on after it is his: the board has shown the job as open all the while.
TEST_F(cmdEndDayTest, VanishedEmployeeWhoEndsHisDayAgainIsAskedAgainAndHasTheLongerJobRecorded)
{
    AnnWorks();
    Loses("LDEmp", "EmpID = 7");
    IsSure().Types("77").ConfirmsProgress().EndsDay();
    At("05:00 PM").IsSure().Types("77").ConfirmsProgress().EndsDay();
    ASSERT_EQ(Jobs().size(), 2U);
    EXPECT_EQ(Jobs()[1].Text(LDHistory::JobEnd), "5:00:00 PM");
}

TEST_F(cmdEndDayTest, FailuresAreReportedUnderItsNameAndTheTotalsAreStillWritten)
{
    AnnWorks();
    shop.state.employees = dao::Recordset();
    EndsUnattended();
    ASSERT_FALSE(Reports().empty());
    for (const std::string& report : Reports())
        EXPECT_NE(report.find("Sub frmLodrin!cmdEndDay_Click()"), std::string::npos) << report;
    EXPECT_EQ(Totals().size(), 1U);
}

TEST_F(cmdEndDayTest, AnotherEmployeesDayStaysAsItIs)
{
    AnnWorks();
    Select("Jones, Bob").Picks("RL", "Paint").Starts(1002);
    const Record bob = EmployeeRecord("Jones, Bob");
    Select("Smith, Ann").IsSure().Types("77").ConfirmsProgress().EndsDay();
    EXPECT_EQ(EmployeeRecord("Jones, Bob"), bob);
    EXPECT_EQ(Board("Jones, Bob", LDEmp::WONumber), "1002");
}

}  // namespace
