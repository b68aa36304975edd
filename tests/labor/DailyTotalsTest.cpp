// SPDX-License-Identifier: Apache-2.0
// DailyTotalsTest: one row adds up an employee's day.
#include "labor/DailyTotals.h"

#include "app/ResumeNext.h"
#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::LDTotals;

constexpr const char* kLocation = "Sub frmLodrin!cmdEndDay_Click()";

class DailyTotalsTest : public ShopFixture {
protected:
    // Bob's board row shows a day from `start` to `end`, begun on `workDate`.
    void BobsDay(const char* start, const char* end, base::Date workDate = base::Date{38061})
    {
        Given({Employee("Jones, Bob", 8)
                   .With(LDEmp::StartDay.name, base::ReadDate(start).value())
                   .With(LDEmp::EndDay.name, base::ReadDate(end).value())
                   .With(LDEmp::WorkDate.name, workDate)});
        Select("Jones, Bob");
    }
    void Write() { lodrin::DailyTotals({shop, kLocation}, shop); }
    Record TheTotals()
    {
        const std::vector<Record> totals = Totals();
        if (totals.size() != 1) throw std::logic_error(std::to_string(totals.size()) + " rows");
        return totals.front();
    }
};

TEST_F(DailyTotalsTest, RowTellsWhoWhenAndHowLong)
{
    Given({ClosedJob(8, 1001, base::Date{38061}), ClosedJob(8, 1002, base::Date{38061}),
           ClosedJob(9, 1001, base::Date{38061}), ClosedJob(8, 1001, base::Date{38060})});
    BobsDay("07:00 AM", "03:30 PM");
    Write();
    const Record totals = TheTotals();
    EXPECT_EQ(totals[LDTotals::EmpID], 8);
    EXPECT_EQ(totals.Text(LDTotals::WorkDate), "3/15/2004");
    EXPECT_EQ(totals.Text(LDTotals::StartDay), "7:00:00 AM");
    EXPECT_EQ(totals.Text(LDTotals::EndDay), "3:30:00 PM");
    EXPECT_EQ(totals.Text(LDTotals::JobCount), "2");
    EXPECT_EQ(totals.Text(LDTotals::JobHrs), "2");
    EXPECT_TRUE(Reports().empty());
}

TEST_F(DailyTotalsTest, SevenToHalfPastThreeIsEightAndAHalf)
{
    BobsDay("07:00 AM", "03:30 PM");
    Write();
    EXPECT_EQ(TheTotals()[LDTotals::TotHrs], 8.5);
}

TEST_F(DailyTotalsTest, DayAcrossMidnightIsMeasuredWithoutDates)
{
    BobsDay("10:00 PM", "02:00 AM");
    Write();
    EXPECT_EQ(TheTotals()[LDTotals::TotHrs], 20.0);
}

TEST_F(DailyTotalsTest, DayOfNoLengthIsStored)
{
    BobsDay("08:00 AM", "08:00 AM");
    Write();
    EXPECT_EQ(TheTotals()[LDTotals::TotHrs], 0.0);
}

TEST_F(DailyTotalsTest, DayWithoutAClosedJobCountsNoneAndItsHoursAreNull)
{
    BobsDay("07:00 AM", "03:30 PM");
    Write();
    EXPECT_EQ(TheTotals().Text(LDTotals::JobCount), "0");
    EXPECT_TRUE(TheTotals()[LDTotals::JobHrs].IsNull());
}

TEST_F(DailyTotalsTest, SecondClosingOnTheSameDateEditsTheOneRow)
{
    BobsDay("07:00 AM", "03:30 PM");
    Write();
    const Record first = TheTotals();
    Given({ClosedJob(8, 1001, base::Date{38061})});
    shop.window.grdEmp.SetCell(LDEmp::EndDay.column, base::ReadDate("05:00 PM").value());
    Write();
    EXPECT_EQ(TheTotals()[LDTotals::ID], first[LDTotals::ID]);
    EXPECT_EQ(TheTotals()[LDTotals::TotHrs], 10.0);
    EXPECT_EQ(TheTotals().Text(LDTotals::JobCount), "1");
}

TEST_F(DailyTotalsTest, DayClosedAfterMidnightCountsTheJobsOfItsStartUnderTheNewDate)
{
    Given({ClosedJob(8, 1001, base::Date{38060}), ClosedJob(8, 1003, base::Date{38060}),
           ClosedJob(8, 1002, base::Date{38061})});
    BobsDay("10:00 PM", "02:00 AM", base::Date{38060});
    Write();
    EXPECT_EQ(TheTotals().Text(LDTotals::WorkDate), "3/15/2004");
    EXPECT_EQ(TheTotals().Text(LDTotals::JobCount), "2");
}

TEST_F(DailyTotalsTest, TwoEmployeesHaveARowEach)
{
    Given({Employee("Smith, Ann", 7)
               .With(LDEmp::StartDay.name, base::Date{0.25})
               .With(LDEmp::EndDay.name, base::Date{0.5})
               .With(LDEmp::WorkDate.name, base::Date{38061})});
    BobsDay("07:00 AM", "03:30 PM");
    Write();
    Select("Smith, Ann");
    Write();
    ASSERT_EQ(Totals().size(), 2U);
    EXPECT_EQ(Totals()[1][LDTotals::EmpID], 7);
    EXPECT_EQ(Totals()[1][LDTotals::TotHrs], 6.0);
}

TEST_F(DailyTotalsTest, QueriesAreLeftInTheSharedText)
{
    BobsDay("07:00 AM", "03:30 PM");
    Write();
    EXPECT_EQ(shop.state.sqlText,
              "SELECT * FROM LDTotals WHERE EmpID = 8 AND WorkDate = #3/15/2004#");
    EXPECT_EQ(lodrin::CountOfJobs("8", "3/14/2004"),
              "SELECT Count(ID) as JobCt, Sum(Hrs) as JobHrs FROM LDHistory WHERE EmpID = 8 AND "
              "WorkDate = #3/14/2004#");
}

// Before anybody is chosen the board stands on its first row, but the current employee is none.
TEST_F(DailyTotalsTest, TotalsBelongToTheCurrentEmployeeAlsoWhenNobodyIsChosen)
{
    BobsDay("07:00 AM", "03:30 PM");
    shop.state.currentEmployee = -1;
    Write();
    EXPECT_EQ(TheTotals()[LDTotals::EmpID], -1);
}

TEST_F(DailyTotalsTest, DayWithoutAStartKeepsItsRowAndTellsThatItHasNoLength)
{
    Given({Employee("Jones, Bob", 8)
               .With(LDEmp::EndDay.name, base::Date{0.5})
               .With(LDEmp::WorkDate.name, base::Date{38061})});
    Select("Jones, Bob");
    Write();
    EXPECT_TRUE(TheTotals()[LDTotals::StartDay].IsNull());
    EXPECT_EQ(TheTotals()[LDTotals::TotHrs], 0.0);
    EXPECT_EQ(Reports(), std::vector<std::string>{std::string("94 ") + kLocation});
}

TEST_F(DailyTotalsTest, WithoutDatabaseEachStatementIsReportedUnderTheCallersName)
{
    BobsDay("07:00 AM", "03:30 PM");
    shop.state.database.Close();
    Write();
    EXPECT_GE(Reports().size(), 9U);
    for (const std::string& report : Reports())
        EXPECT_NE(report.find(kLocation), std::string::npos) << report;
    EXPECT_TRUE(Totals().empty());
}

}  // namespace
