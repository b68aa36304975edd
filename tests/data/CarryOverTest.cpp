// SPDX-License-Identifier: Apache-2.0
// Days that were left open are closed when the database is opened.
#include "data/CarryOver.h"

#include "app/ResumeNext.h"
#include "base/Calendar.h"
#include "data/DBOpen.h"
#include "tests/support/ShopFixture.h"
#include "tests/support/StartTexts.h"

namespace lodrin {
namespace {

using base::Date;
using base::Null;
using base::Value;
using tests::Employee;
using tests::Record;

constexpr double kToday = 38061;  // Monday, March 15, 2004
constexpr double kFriday = 38058;

Date Clock(int hour, int minute)
{
    return base::DateFrom({1899, 12, 30, hour, minute, 0});
}

tests::ShopEntry ClockedIn(const std::string& name, std::int32_t id, double day)
{
    return Employee(name, id).With("StartDay", Clock(8, 0)).With("WorkDate", Date{day});
}

tests::ShopEntry OnAJob(const std::string& name, std::int32_t id, double day)
{
    return ClockedIn(name, id, day)
        .With("StartJob", Clock(10, 20))
        .With("WO#", 1001)
        .With("WOID", 6001)
        .With("VehDesc", "1999 Ford")
        .With("Customer", "Customer 1001")
        .With("GLType", "BL");
}

class CarryOverTest : public tests::ShopFixture {
protected:
    void OpenDatabase()
    {
        fakes.prompts.Expect(tests::kNothingToSynchronise);
        DBOpen(shop);
    }
};

TEST_F(CarryOverTest, AnOpenJobOfAnEarlierDayIsRecordedUntilThatDaysEnd)
{
    Given({OnAJob("Smith, Ann", 7, kFriday)});
    OpenDatabase();
    ASSERT_EQ(Jobs().size(), 1U);
    const Record job = Jobs().front();
    EXPECT_EQ(job["EmpID"], Value(7));
    EXPECT_EQ(job["WorkDate"], Value(Date{kFriday}));
    EXPECT_EQ(job.Text("JobStart"), "10:20:00 AM");
    EXPECT_EQ(job.Text("JobEnd"), "11:59:00 PM");
    EXPECT_EQ(job["WONumb"], Value(1001));
    EXPECT_EQ(job["WOID"], Value(6001));
    EXPECT_EQ(job["GLType"], Value("BL"));
    EXPECT_EQ(job["Hrs"], Value(13.65));
    EXPECT_EQ(job["VehDesc"], Value("1999 Ford"));
    EXPECT_EQ(job["Customer"], Value("Customer 1001"));
}

TEST_F(CarryOverTest, TheTotalsOfThatDayAreWritten)
{
    Given({OnAJob("Smith, Ann", 7, kFriday)});
    OpenDatabase();
    ASSERT_EQ(Totals().size(), 1U);
    const Record totals = Totals().front();
    EXPECT_EQ(totals["EmpID"], Value(7));
    EXPECT_EQ(totals["WorkDate"], Value(Date{kFriday}));
    EXPECT_EQ(totals.Text("StartDay"), "8:00:00 AM");
    EXPECT_EQ(totals.Text("EndDay"), "11:59:00 PM");
    EXPECT_EQ(totals["TotHrs"], Value(15.98));
    EXPECT_EQ(totals.Text("JobCount"), "1");
    EXPECT_EQ(totals["JobHrs"], Value(13.65));
}

TEST_F(CarryOverTest, TheEmployeesDayIsCleared)
{
    Given({OnAJob("Smith, Ann", 7, kFriday).With("EndDay", Clock(17, 0))});
    OpenDatabase();
    const Record employee = EmployeeRecord("Smith, Ann");
    for (const char* field : {"StartDay", "WO#", "WOID", "StartJob", "EndDay"})
        EXPECT_EQ(employee[field], Value(Null{})) << field;
    for (const char* field : {"VehDesc", "Customer", "GLType"})
        EXPECT_EQ(employee[field], Value("")) << field;
    EXPECT_EQ(employee["WorkDate"], Value(Date{kFriday}));
    EXPECT_EQ(Board("Smith, Ann", LDEmp::StartDay), "");
}

TEST_F(CarryOverTest, AnEmployeeClockedInTodayIsLeftUntouched)
{
    Given({OnAJob("Smith, Ann", 7, kToday)});
    const tests::Contents before = Stored();
    OpenDatabase();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Board("Smith, Ann", LDEmp::Customer), "Customer 1001");
}

TEST_F(CarryOverTest, AnEmployeeWhoNeverWorkedIsLeftUntouched)
{
    Given({Employee("Smith, Ann", 7)});
    const tests::Contents before = Stored();
    OpenDatabase();
    EXPECT_EQ(Stored(), before);
}

TEST_F(CarryOverTest, EveryForgottenEmployeeIsClosedOut)
{
    Given({OnAJob("Smith, Ann", 7, kFriday), OnAJob("Jones, Bob", 8, kFriday),
           OnAJob("Miller, Cy", 9, kToday)});
    OpenDatabase();
    EXPECT_EQ(Jobs().size(), 2U);
    EXPECT_EQ(Totals().size(), 2U);
    EXPECT_EQ(EmployeeRecord("Miller, Cy").Text("Customer"), "Customer 1001");
}

TEST_F(CarryOverTest, ADayWithoutAnyJobHasACountOfZeroAndNoHours)
{
    Given({ClockedIn("Smith, Ann", 7, kFriday)});
    OpenDatabase();
    EXPECT_TRUE(Jobs().empty());
    ASSERT_EQ(Totals().size(), 1U);
    EXPECT_EQ(Totals().front().Text("JobCount"), "0");
    EXPECT_EQ(Totals().front()["JobHrs"], Value(Null{}));
}

TEST_F(CarryOverTest, TheJobsOfThatDayAreCountedWithTheOneJustClosed)
{
    Given({OnAJob("Smith, Ann", 7, kFriday), tests::ClosedJob(7, 1001, {kFriday}),
           tests::ClosedJob(7, 1001, {kToday}), tests::ClosedJob(8, 1001, {kFriday})});
    OpenDatabase();
    ASSERT_EQ(Totals().size(), 1U);
    EXPECT_EQ(Totals().front().Text("JobCount"), "2");
    EXPECT_EQ(Totals().front()["JobHrs"], Value(14.65));
}

TEST_F(CarryOverTest, TotalsThatAreThereAreEditedAndKeepTheirStart)
{
    Given({ClockedIn("Smith, Ann", 7, kFriday), tests::ShopEntry({{"LDTotals",
                                                                   {{"EmpID", 7},
                                                                    {"WorkDate", Date{kFriday}},
                                                                    {"StartDay", Clock(7, 0)},
                                                                    {"EndDay", Clock(12, 0)},
                                                                    {"TotHrs", 5.0}}}})});
    OpenDatabase();
    ASSERT_EQ(Totals().size(), 1U);
    EXPECT_EQ(Totals().front().Text("StartDay"), "7:00:00 AM");
    EXPECT_EQ(Totals().front().Text("EndDay"), "11:59:00 PM");
    EXPECT_EQ(Totals().front()["TotHrs"], Value(16.98));
}

TEST_F(CarryOverTest, OpeningAgainWritesTheSameFiguresAndNoSecondJob)
{
    Given({OnAJob("Smith, Ann", 7, kFriday)});
    OpenDatabase();
    const tests::Contents before = Stored();
    OpenDatabase();
    EXPECT_EQ(Stored(), before);
}

TEST_F(CarryOverTest, TheClosedJobIsPostedToTheLaborLines)
{
    // A job that was posted before must not be taken for the one just closed.
    Given({tests::ClosedJob(8, 900, {kFriday}), OnAJob("Smith, Ann", 7, kFriday)});
    OpenDatabase();
    ASSERT_EQ(LaborLines().size(), 1U);
    const Record line = LaborLines().front();
    EXPECT_EQ(line["EmployeeID"], Value(7));
    EXPECT_EQ(line["WONumber"], Value(6001));
    EXPECT_EQ(line["WorkOrder"], Value(1001));
    EXPECT_EQ(line["HrsFlagged"], Value(13.65));
    EXPECT_EQ(line.Text("TimeOut"), "11:59:00 PM");
}

TEST_F(CarryOverTest, TheRepairOrdersTotalsLackTheJobAndEachStepIsReported)
{
    Given({OnAJob("Smith, Ann", 7, kFriday), tests::RepairOrder(1001)});
    OpenDatabase();
    EXPECT_EQ(Order(1001)["BodyWorked"], Value(0.0));
    // The repair orders are not open yet: edit, hours, cost, and storing them fail.
    EXPECT_EQ(Reports(), (std::vector<std::string>(4, "91 Sub frmLodrin!WriteLabor()")));
}

TEST_F(CarryOverTest, AJobOfAnEmployeeWithoutAProfileIsRecordedAndNotPosted)
{
    Given({OnAJob("Smith, Ann", 7, kFriday).Without("Profile")});
    OpenDatabase();
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_TRUE(LaborLines().empty());
}

TEST_F(CarryOverTest, AJobThatCouldNotBeRecordedIsNotPostedAndStaysOpenForTheNextStart)
{
    Given({OnAJob("Smith, Ann", 7, kFriday), tests::ClosedJob(8, 900, {kFriday})});
    Open();
    shop.state.history.Close();
    CloseForgottenDays(ResumeNext(shop, "Sub frmLodrin!DBOpen()"), shop);
    EXPECT_TRUE(LaborLines().empty());
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(EmployeeRecord("Smith, Ann").Text("Customer"), "Customer 1001");

    OpenDatabase();
    EXPECT_EQ(Jobs().size(), 2U);
    EXPECT_EQ(LaborLines().size(), 1U);
    EXPECT_EQ(EmployeeRecord("Smith, Ann").Text("Customer"), "");
}

// While the program runs for days his working date stays, so that a job begun at eight on the same
// order on two days looks the same twice, and both are his.
TEST_F(CarryOverTest, AJobThatLooksLikeOneInTheHistoryIsRecordedAndPostedAllTheSame)
{
    Given({OnAJob("Smith, Ann", 7, kFriday)});
    OpenDatabase();
    Loses("LDEmp", "EmpID = 7").Given({OnAJob("Smith, Ann", 7, kFriday).Without("Profile")});
    OpenDatabase();
    EXPECT_EQ(Rows("SELECT * FROM LDHistory WHERE EmpID = 7").size(), 2U);
    EXPECT_EQ(Rows("SELECT * FROM Labor WHERE EmployeeID = 7").size(), 2U);
}

TEST_F(CarryOverTest, AWorkingDateThatCannotBeReadClosesNobodysDay)
{
    Given({OnAJob("Smith, Ann", 7, kFriday)});
    Open();
    GivenNo("LDEmp");
    shop.state.employees.MoveFirst();
    CloseForgottenDays(ResumeNext(shop, "Sub frmLodrin!DBOpen()"), shop);
    EXPECT_TRUE(Jobs().empty());
    EXPECT_TRUE(Totals().empty());
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3167 Sub frmLodrin!DBOpen()"}));
}

}  // namespace
}  // namespace lodrin
