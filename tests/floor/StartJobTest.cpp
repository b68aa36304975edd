// SPDX-License-Identifier: Apache-2.0
// StartJobTest: an employee is put on a repair order.
#include "floor/StartJob.h"

#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::Labor;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::Profile;
using lodrin::WorkOrder;

constexpr const char* kUnknownOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

class StartJobTest : public ShopFixture {
protected:
    base::Date Today() const { return base::DatePartOf(fakes.clock.Now()); }
    static base::Value Clock(const char* time) { return base::ReadDate(time).value(); }

    // Bob, at work since seven.
    ShopEntry BobAtWork() const
    {
        return Employee("Jones, Bob", 8)
            .With(LDEmp::StartDay.name, Clock("07:00 AM"))
            .With(LDEmp::WorkDate.name, Today());
    }
};

TEST_F(StartJobTest, FirstJobStartsTheDayAndOpensTheJob)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    At("08:05:42 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    const Record bob = EmployeeRecord("Jones, Bob");
    EXPECT_EQ(bob.Text(LDEmp::StartDay.name), "8:05:00 AM");
    EXPECT_EQ(bob.Text(LDEmp::WorkDate.name), "3/15/2004");
    EXPECT_EQ(bob.Text(LDEmp::StartJob.name), "8:05:00 AM");
    EXPECT_EQ(bob[LDEmp::VehDesc.name], "1999 Ford 1001");
    EXPECT_EQ(bob[LDEmp::Customer.name], "Customer 1001");
    EXPECT_EQ(bob[LDEmp::WONumber.name], 1001);
    EXPECT_EQ(bob[LDEmp::WOID.name], EntryOf(1001));
    EXPECT_EQ(bob[LDEmp::GLType.name], "BL");
    EXPECT_TRUE(bob[LDEmp::EndDay.name].IsNull());
    EXPECT_TRUE(Jobs().empty());
    EXPECT_TRUE(Reports().empty());
}

TEST_F(StartJobTest, BoardShowsWhatTheRecordHolds)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001)});
    At("08:05 AM").Select("Smith, Ann").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(Board("Smith, Ann", LDEmp::StartDay), "08:05 AM");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::StartJob), "08:05 AM");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::VehDesc), "1999 Ford 1001");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::Customer), "Customer 1001");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::WONumber), "1001");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::GLType), "BL");
    EXPECT_EQ(Board("Jones, Bob", LDEmp::Customer), "");
    const platform::Grid& board = shop.window.grdEmp;
    EXPECT_TRUE(board.Value(LDEmp::WorkDate.column).IsDate());
    EXPECT_EQ(board.Text(LDEmp::WOID.column), std::to_string(EntryOf(1001)));
    EXPECT_FALSE(board.allowEdit);
}

TEST_F(StartJobTest, StartedDayKeepsItsStart)
{
    Given({BobAtWork(), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    const Record bob = EmployeeRecord("Jones, Bob");
    EXPECT_EQ(bob.Text(LDEmp::StartDay.name), "7:00:00 AM");
    EXPECT_EQ(bob[LDEmp::Customer.name], "Customer 1001");
    EXPECT_TRUE(Jobs().empty());
}

TEST_F(StartJobTest, DayWithoutStartOrWorkDateIsStartedAnew)
{
    Given({BobAtWork().With(LDEmp::WorkDate.name, base::Null{}),
           Employee("Smith, Ann", 7).With(LDEmp::WorkDate.name, Today()), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    At("08:30 AM").Select("Smith, Ann").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(EmployeeRecord("Jones, Bob").Text(LDEmp::StartDay.name), "8:00:00 AM");
    EXPECT_EQ(EmployeeRecord("Smith, Ann").Text(LDEmp::StartDay.name), "8:30:00 AM");
}

TEST_F(StartJobTest, OpenJobIsClosedAndItsLaborGoesToTheNewOrder)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), RepairOrder(1002)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    At("09:30 AM").Picks("RL", "Paint").Starts(1002);
    const std::vector<Record> jobs = Jobs();
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0][LDHistory::WONumb], 1001);
    EXPECT_EQ(jobs[0][LDHistory::GLType], "BL");
    EXPECT_EQ(jobs[0][LDHistory::Hrs], 1.5);
    ASSERT_EQ(LaborLines().size(), 1U);
    EXPECT_EQ(LaborLines()[0][Labor::WorkOrder], 1001);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 0.0);
    EXPECT_EQ(Order(1002)[WorkOrder::BodyWorked], 1.5);
    EXPECT_EQ(Order(1002)[WorkOrder::BodyCost], base::Currency{300000});
    const Record bob = EmployeeRecord("Jones, Bob");
    EXPECT_EQ(bob[LDEmp::WONumber.name], 1002);
    EXPECT_EQ(bob.Text(LDEmp::StartJob.name), "9:30:00 AM");
    EXPECT_EQ(bob.Text(LDEmp::StartDay.name), "8:00:00 AM");
    EXPECT_TRUE(Reports().empty());
}

TEST_F(StartJobTest, SameOrderAgainClosesTheJobAndOpensItWithANewTime)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    At("10:20 AM").Picks("BL", "Paint").Starts(1001);
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0][LDHistory::Hrs], 2.33);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 2.33);
    EXPECT_EQ(EmployeeRecord("Jones, Bob").Text(LDEmp::StartJob.name), "10:20:00 AM");
}

TEST_F(StartJobTest, JobIsOpenByTheCustomerNotByItsStart)
{
    Given(
        {BobAtWork().With(LDEmp::StartJob.name, Clock("07:10 AM")).With(LDEmp::WONumber.name, 1001),
         RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_TRUE(Jobs().empty());
}

TEST_F(StartJobTest, FirstBodyJobStaysTheTechnicianOfTheOrder)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001)});
    At("08:00 AM").Select("Smith, Ann").Picks("BL", "Paint").Starts(1001);
    At("09:05 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001)[WorkOrder::BLTech], 7);
    EXPECT_TRUE(Order(1001)[WorkOrder::RLTech].IsNull());
}

TEST_F(StartJobTest, RefinishJobStampsTheRefinishTechnician)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001).With(WorkOrder::RLTech, 0)});
    At("08:00 AM").Select("Jones, Bob").Picks("RL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001)[WorkOrder::RLTech], 8);
    EXPECT_TRUE(Order(1001)[WorkOrder::BLTech].IsNull());
}

TEST_F(StartJobTest, OtherLaborLeavesBothTechniciansAlone)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("ML", "Paint").Starts(1001);
    EXPECT_TRUE(Order(1001)[WorkOrder::BLTech].IsNull());
    EXPECT_TRUE(Order(1001)[WorkOrder::RLTech].IsNull());
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::GLType.name], "ML");
}

TEST_F(StartJobTest, NewDepartmentAddsOneLineToTheNotes)
{
    Given({Employee("Smith, Ann", 7), RepairOrder(1001)
                                          .With(WorkOrder::DeptSequence, std::int16_t{30})
                                          .With(WorkOrder::AuditNotes, "Brought in by tow truck")});
    At("09:05 AM").Select("Smith, Ann").Picks("RL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001)[WorkOrder::DeptSequence], std::int16_t{70});
    EXPECT_EQ(Order(1001)[WorkOrder::AuditNotes],
              "Brought in by tow truck\r\n[Smith, Ann - 03/15/2004 - 09:05 AM] Department changed "
              "to Paint");
}

TEST_F(StartJobTest, NotesThatWereNullBeginWithTheLineBreak)
{
    Given({Employee("Smith, Ann", 7),
           RepairOrder(1001).With(WorkOrder::DeptSequence, std::int16_t{30})});
    At("09:05 AM").Select("Smith, Ann").Picks("RL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001)[WorkOrder::AuditNotes],
              "\r\n[Smith, Ann - 03/15/2004 - 09:05 AM] Department changed to Paint");
}

TEST_F(StartJobTest, SameDepartmentAddsNoLine)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)
                                          .With(WorkOrder::DeptSequence, std::int16_t{70})
                                          .With(WorkOrder::AuditNotes, "before")});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001)[WorkOrder::DeptSequence], std::int16_t{70});
    EXPECT_EQ(Order(1001)[WorkOrder::AuditNotes], "before");
}

TEST_F(StartJobTest, SameDepartmentIsStoredAgain)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)
                                          .With(WorkOrder::BLTech, 7)
                                          .With(WorkOrder::DeptSequence, std::int16_t{70})
                                          .With(WorkOrder::Started, base::Date{38000})
                                          .With(WorkOrder::Arrived, base::Date{38000})});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint");
    // Another station edits the order: the one store of it is refused.
    dao::Database another = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    dao::Recordset order = another.OpenRecordset("SELECT * FROM WorkOrder");
    order.Edit();
    pause = [](auto) {};
    fakes.prompts.TakeAnyBox();
    Starts(1001);
    ASSERT_EQ(fakes.prompts.boxes.size(), 1U);
    EXPECT_NE(fakes.prompts.boxes[0].text.find("locked"), std::string::npos);
}

TEST_F(StartJobTest, FirstDepartmentOfAnOrderAddsNoLine)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001)[WorkOrder::DeptSequence], std::int16_t{70});
    EXPECT_TRUE(Order(1001)[WorkOrder::AuditNotes].IsNull());
}

TEST_F(StartJobTest, StartedAndArrivedAreSetOnceAndNeverMoved)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001)});
    At("08:00:07 AM").Select("Smith, Ann").Picks("BL", "Paint").Starts(1001);
    At("09:05 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(Order(1001).Text(WorkOrder::Started), "3/15/2004 8:00:07 AM");
    EXPECT_EQ(Order(1001).Text(WorkOrder::Arrived), "3/15/2004 8:00:07 AM");
}

TEST_F(StartJobTest, EndedDayIsOpenAgainWithItsFormerStart)
{
    Given({BobAtWork().With(LDEmp::EndDay.name, Clock("04:30 PM")), RepairOrder(1001)});
    At("05:00 PM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    const Record bob = EmployeeRecord("Jones, Bob");
    EXPECT_TRUE(bob[LDEmp::EndDay.name].IsNull());
    EXPECT_EQ(bob.Text(LDEmp::StartDay.name), "7:00:00 AM");
    EXPECT_EQ(bob[LDEmp::Customer.name], "Customer 1001");
    EXPECT_EQ(Board("Jones, Bob", LDEmp::EndDay), "");
}

TEST_F(StartJobTest, EndedDayWithoutStartIsStartedAnew)
{
    Given(
        {Employee("Jones, Bob", 8).With(LDEmp::EndDay.name, Clock("04:30 PM")), RepairOrder(1001)});
    At("05:00 PM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(EmployeeRecord("Jones, Bob").Text(LDEmp::StartDay.name), "5:00:00 PM");
}

TEST_F(StartJobTest, RefusedPINWritesNothing)
{
    Given({BobAtWork().With(Profile::PIN, "1234").With(LDEmp::EndDay.name, Clock("04:30 PM")),
           RepairOrder(1001)});
    const Contents before = Stored();
    fakes.prompts.ExpectInput("Please enter your PIN", "4321");
    fakes.prompts.Expect("Invalid PIN entered");
    At("05:00 PM").Select("Jones, Bob").Starts(1001);
    EXPECT_EQ(fakes.prompts.boxes.at(0),
              (platform::Box{.text = "Invalid PIN entered", .title = "Invalid PIN"}));
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Board("Jones, Bob", LDEmp::EndDay), "04:30 PM");
    EXPECT_EQ(dialogs.glSelects, 0);
}

TEST_F(StartJobTest, RightPINGoesOn)
{
    Given({Employee("Jones, Bob", 8).With(Profile::PIN, "1234"), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Types("1234").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], 1001);
}

TEST_F(StartJobTest, LeftDialogWritesNothing)
{
    Given({BobAtWork(), RepairOrder(1001)});
    const Contents before = Stored();
    At("08:00 AM").Select("Jones, Bob").Leaves().Starts(1001);
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(StartJobTest, LeftDialogForgetsTheChoiceOfTheJobBefore)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), RepairOrder(1002)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    const Contents before = Stored();
    At("09:00 AM").Leaves().Starts(1002);
    EXPECT_EQ(Stored(), before);
}

TEST_F(StartJobTest, LeftDialogKeepsADayReopened)
{
    Given({BobAtWork().With(LDEmp::EndDay.name, Clock("04:30 PM")), RepairOrder(1001)});
    At("05:00 PM").Select("Jones, Bob").Leaves().Starts(1001);
    EXPECT_TRUE(EmployeeRecord("Jones, Bob")[LDEmp::EndDay.name].IsNull());
    EXPECT_EQ(Board("Jones, Bob", LDEmp::EndDay), "");
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::Customer.name], "");
}

TEST_F(StartJobTest, UnknownOrderIsToldAndKeepsADayReopened)
{
    Given({BobAtWork().With(LDEmp::EndDay.name, Clock("04:30 PM")), RepairOrder(1001)});
    fakes.prompts.Expect(kUnknownOrder);
    At("05:00 PM").Select("Jones, Bob").Picks("BL", "Paint").Starts(4711);
    EXPECT_EQ(fakes.prompts.boxes.at(0), (platform::Box{.text = kUnknownOrder}));
    EXPECT_TRUE(EmployeeRecord("Jones, Bob")[LDEmp::EndDay.name].IsNull());
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::Customer.name], "");
    EXPECT_TRUE(Jobs().empty());
}

TEST_F(StartJobTest, NumberZeroAsksAndWritesNothing)
{
    Given({BobAtWork().With(Profile::PIN, "1234").With(LDEmp::EndDay.name, Clock("04:30 PM"))});
    Select("Jones, Bob");
    lodrin::StartJob(shop, 0);
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
    EXPECT_EQ(Board("Jones, Bob", LDEmp::EndDay), "04:30 PM");
}

TEST_F(StartJobTest, EmployeeWhoseRecordIsGoneGetsNoJob)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    Select("Jones, Bob");
    GivenNo("LDEmp");
    At("08:00 AM").Picks("BL", "Paint").Starts(1001);
    EXPECT_TRUE(Order(1001)[WorkOrder::BLTech].IsNull());
    EXPECT_TRUE(Order(1001)[WorkOrder::DeptSequence].IsNull());
}

TEST_F(StartJobTest, OverlongVehicleIsReportedAndTheOtherFieldsAreWritten)
{
    // The shop of these tests has room for longer vehicles on orders than on the board.
    const std::string vehicle(120, 'x');
    Given({Employee("Jones, Bob", 8),
           RepairOrder(1001).With(WorkOrder::ServiceItemDescriptionL1, vehicle)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::VehDesc.name], "");
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::Customer.name], "Customer 1001");
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3163 Sub frmLodrin!StartJob()"}));
}

TEST_F(StartJobTest, EventsRunOnceBeforeTheDialog)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint");
    int before = -1;
    dialogs.whileGLSelectIsOpen = [&](lodrin::Shop&) { before = fakes.events.count; };
    Starts(1001);
    EXPECT_EQ(before, 1);
    EXPECT_EQ(fakes.events.count, 1);
}

TEST_F(StartJobTest, OtherRowsStayByteForByteAsTheyWere)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001),
           RepairOrder(1002), ClosedJob(7, 1002, Today())});
    const Contents before = Stored();
    At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    Contents after = Stored();
    for (const char* table : {"LDHistory", "Labor", "Profile", "Status", "Departments"})
        EXPECT_EQ(after[table], before.at(table)) << table;
    EXPECT_EQ(after["LDEmp"][1], before.at("LDEmp")[1]);
    EXPECT_EQ(after["WorkOrder"][1], before.at("WorkOrder")[1]);
    EXPECT_NE(after["LDEmp"][0], before.at("LDEmp")[0]);
}

}  // namespace
