// SPDX-License-Identifier: Apache-2.0
// GetHistoryTest: the day's jobs and the last ten jobs beside the board.
#include "labor/GetHistory.h"

#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDHistory;

class GetHistoryTest : public ShopFixture {
protected:
    base::Date Today() const { return base::DatePartOf(fakes.clock.Now()); }
    base::Date Yesterday() const { return {Today().days - 1}; }
    base::Date Tomorrow() const { return {Today().days + 1}; }

    std::vector<std::string> LastJobs() const
    {
        std::vector<std::string> entries;
        const platform::ListBox& list = shop.window.lstHistory;
        for (int index = 0; index < list.ListCount(); ++index)
            entries.push_back(list.List(index));
        return entries;
    }
    // The repair-order numbers of the day's jobs, from top to bottom.
    std::vector<std::string> DailyNumbers() const
    {
        constexpr int kNumberColumn = 6;
        std::vector<std::string> numbers;
        const platform::Grid& daily = shop.window.grdDaily;
        for (int row = 1; row <= daily.RowCount(); ++row)
            numbers.push_back(daily.Shown(row, kNumberColumn));
        return numbers;
    }
};

TEST_F(GetHistoryTest, DayShowsTheEmployeesJobsOfTodayNewestFirst)
{
    Given({Employee("Jones, Bob", 8),
           ClosedJob(8, 1001, Today()).With(LDHistory::JobStart, base::Date{8.0 / 24}),
           ClosedJob(8, 1002, Today()).With(LDHistory::JobStart, base::Date{10.0 / 24}),
           ClosedJob(8, 1003, Yesterday()), ClosedJob(7, 1004, Today())});
    Select("Jones, Bob");
    EXPECT_EQ(DailyNumbers(), (std::vector<std::string>{"1002", "1001"}));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(GetHistoryTest, QueryTextsStayInTheSharedText)
{
    Given({Employee("Jones, Bob", 8)});
    Select("Jones, Bob");
    EXPECT_EQ(shop.state.sqlText, "SELECT * FROM LDHistory WHERE EmpID = 8");
    lodrin::GetHistory(shop);
    EXPECT_EQ(shop.state.sqlText, "SELECT * FROM LDHistory WHERE EmpID = 8 AND WorkDate = "
                                  "#3/15/2004# ORDER BY JobStart DESC;");
}

TEST_F(GetHistoryTest, EmployeeWithoutJobTodayShowsAnEmptyDayInTheSameLayout)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), ClosedJob(7, 1001, Today())});
    Select("Smith, Ann");
    std::vector<platform::Column> filled;
    for (int column = 1; column <= shop.window.grdDaily.ColumnCount(); ++column)
        filled.push_back(shop.window.grdDaily.ColumnAt(column));
    Select("Jones, Bob");
    EXPECT_EQ(shop.window.grdDaily.RowCount(), 0);
    ASSERT_EQ(static_cast<std::size_t>(shop.window.grdDaily.ColumnCount()), filled.size());
    for (int column = 1; column <= shop.window.grdDaily.ColumnCount(); ++column) {
        const platform::Column& now = shop.window.grdDaily.ColumnAt(column);
        const platform::Column& before = filled[static_cast<std::size_t>(column - 1)];
        EXPECT_EQ(now, before) << column;
    }
}

TEST_F(GetHistoryTest, DayShowsSixColumnsInTheirOrder)
{
    struct Shown {
        int column;
        const char* caption;
        int width;
        const char* format;
    };
    const std::vector<Shown> expected{{10, "Vehicle", 2500, ""},
                                      {6, "WO #", 900, ""},
                                      {8, "Type", 500, ""},
                                      {4, "Job Start", 1100, "hh:mm AM/PM"},
                                      {5, "Job End", 1100, "hh:mm AM/PM"},
                                      {9, "Hrs", 900, ""}};
    Given({Employee("Jones, Bob", 8), ClosedJob(8, 1001, Today())});
    Select("Jones, Bob");
    platform::Grid& daily = shop.window.grdDaily;
    ASSERT_EQ(daily.ColumnCount(), 11);
    int position = 0;
    for (const Shown& shown : expected) {
        const platform::Column& column = daily.ColumnAt(shown.column);
        EXPECT_EQ(column.caption, shown.caption);
        EXPECT_EQ(column.width, shown.width);
        EXPECT_EQ(column.format, shown.format);
        EXPECT_EQ(column.position, ++position);
        EXPECT_TRUE(column.visible);
    }
    for (const int hidden : {1, 2, 3, 7, 11})
        EXPECT_FALSE(daily.ColumnAt(hidden).visible);
    EXPECT_EQ(daily.Shown(1, 4), "08:00 AM");
    EXPECT_EQ(daily.Shown(1, 5), "09:00 AM");
}

TEST_F(GetHistoryTest, FewerThanTenJobsAreAllListedNewestEntryFirst)
{
    Given({Employee("Jones, Bob", 8), ClosedJob(8, 1001, Today()), ClosedJob(8, 1002, Yesterday()),
           ClosedJob(7, 1003, Today())});
    Select("Jones, Bob");
    EXPECT_EQ(LastJobs(),
              (std::vector<std::string>{"1002   1999 Ford 1002", "1001   1999 Ford 1001"}));
}

TEST_F(GetHistoryTest, OfMoreThanTenJobsExactlyTheLastTenAreListed)
{
    Given({Employee("Jones, Bob", 8)});
    for (int number = 1001; number <= 1012; ++number)
        Given({ClosedJob(8, number, Yesterday())});
    Select("Jones, Bob");
    const std::vector<std::string> jobs = LastJobs();
    ASSERT_EQ(jobs.size(), 10U);
    EXPECT_EQ(jobs.front(), "1012   1999 Ford 1012");
    EXPECT_EQ(jobs.back(), "1003   1999 Ford 1003");
}

TEST_F(GetHistoryTest, AfterMidnightTheDayShowsTheNewDatesJobsAndTheLastJobsStay)
{
    Given({Employee("Jones, Bob", 8), ClosedJob(8, 1001, Today()), ClosedJob(8, 1002, Tomorrow())});
    At("11:59 PM").Select("Jones, Bob");
    ASSERT_EQ(DailyNumbers(), (std::vector<std::string>{"1001"}));
    On("3/16/2004").At("12:00 AM").Select("Jones, Bob");
    EXPECT_EQ(DailyNumbers(), (std::vector<std::string>{"1002"}));
    EXPECT_EQ(LastJobs().size(), 2U);
}

TEST_F(GetHistoryTest, WithoutCurrentEmployeeBothViewsAreEmpty)
{
    Given({Employee("Jones, Bob", 8), ClosedJob(8, 1001, Today())});
    Open();
    ASSERT_EQ(shop.state.currentEmployee, -1);
    lodrin::GetHistory(shop);
    lodrin::GetLast10(shop);
    EXPECT_TRUE(DailyNumbers().empty());
    EXPECT_TRUE(LastJobs().empty());
    EXPECT_TRUE(Reports().empty());
}

TEST_F(GetHistoryTest, DoubleClickStartsTheJobAgain)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), ClosedJob(8, 1001, Yesterday())});
    Select("Jones, Bob").Picks("BL", "Paint");
    shop.window.lstHistory.SetListIndex(0);
    lodrin::lstHistory_DblClick(shop);
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[lodrin::LDEmp::WONumber.name], 1001);
}

TEST_F(GetHistoryTest, DoubleClickOnNumberZeroStartsNothing)
{
    Given({Employee("Jones, Bob", 8).With(lodrin::Profile::PIN, "1234"),
           ClosedJob(8, 0, Yesterday())});
    Select("Jones, Bob");
    shop.window.lstHistory.SetListIndex(0);
    lodrin::lstHistory_DblClick(shop);
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
    EXPECT_EQ(dialogs.glSelects, 0);
}

TEST_F(GetHistoryTest, DoubleClickWithoutSelectionIsReportedAndStartsNothing)
{
    Given({Employee("Jones, Bob", 8)});
    Select("Jones, Bob");
    lodrin::lstHistory_DblClick(shop);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"5 Sub frmLodrin!lstHistory_DblClick()"}));
    EXPECT_EQ(dialogs.glSelects, 0);
}

TEST_F(GetHistoryTest, WithoutDatabaseEachStepIsReportedUnderItsProcedure)
{
    lodrin::GetHistory(shop);
    lodrin::GetLast10(shop);
    const std::vector<std::string> reports = Reports();
    ASSERT_GE(reports.size(), 4U);
    EXPECT_EQ(reports[0], "91 Sub frmLodrin!GetHistory()");
    EXPECT_EQ(reports[1], "91 Sub frmLodrin!GetHistory()");
    EXPECT_EQ(reports[2], "9 Sub frmLodrin!GetHistoryView()");
    EXPECT_EQ(reports.back(), "91 Sub frmLodrin!GetLast10()");
}

}  // namespace
