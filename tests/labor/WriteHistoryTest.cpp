// SPDX-License-Identifier: Apache-2.0
// WriteHistoryTest: an open job becomes one history row.
#include "labor/WriteHistory.h"

#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;
using lodrin::LDHistory;

class WriteHistoryTest : public ShopFixture {
protected:
    // Bob has a job open since `start`; at `end` it is closed.
    void BobWorks(const char* start, const char* end)
    {
        Given({BobOnJob(start), RepairOrder(1001)});
        CloseAt(end);
    }

    ShopEntry BobOnJob(const char* start) const
    {
        const base::Date began = base::ReadDate(start).value();
        return Employee("Jones, Bob", 8)
            .With(LDEmp::StartDay.name, base::Date{7.0 / 24})
            .With(LDEmp::StartJob.name, began)
            .With(LDEmp::WorkDate.name, base::DatePartOf(fakes.clock.Now()))
            .With(LDEmp::WONumber.name, 1001)
            .With(LDEmp::WOID.name, EntryOf(1001))
            .With(LDEmp::VehDesc.name, "1999 Ford")
            .With(LDEmp::Customer.name, "Evans, Brian")
            .With(LDEmp::GLType.name, "BL");
    }

    void CloseAt(const char* end)
    {
        At(end).Select("Jones, Bob");
        shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
        lodrin::WriteHistory(shop);
    }

    std::string StoredHours()
    {
        const std::vector<Record> jobs = Jobs();
        return jobs.size() == 1 ? jobs[0].Text(LDHistory::Hrs) : std::to_string(jobs.size());
    }
};

TEST_F(WriteHistoryTest, RowTellsWhoWhenOnWhatAndForHowLong)
{
    BobWorks("08:00 AM", "10:20 AM");
    const std::vector<Record> jobs = Jobs();
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0][LDHistory::EmpID], 8);
    EXPECT_EQ(jobs[0].Text(LDHistory::WorkDate), "3/15/2004");
    EXPECT_EQ(jobs[0].Text(LDHistory::JobStart), "8:00:00 AM");
    EXPECT_EQ(jobs[0].Text(LDHistory::JobEnd), "10:20:00 AM");
    EXPECT_EQ(jobs[0][LDHistory::WONumb], 1001);
    EXPECT_EQ(jobs[0][LDHistory::WOID], EntryOf(1001));
    EXPECT_EQ(jobs[0][LDHistory::GLType], "BL");
    EXPECT_EQ(jobs[0][LDHistory::Hrs], 2.33);
    EXPECT_EQ(jobs[0][LDHistory::VehDesc], "1999 Ford");
    EXPECT_EQ(jobs[0][LDHistory::Customer], "Evans, Brian");
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteHistoryTest, JobWithinOneMinuteLeavesNoRowAndPostsNoLabor)
{
    BobWorks("08:00 AM", "08:00:59 AM");
    EXPECT_TRUE(Jobs().empty());
    EXPECT_TRUE(LaborLines().empty());
    EXPECT_EQ(Order(1001)[lodrin::WorkOrder::BodyWorked], 0.0);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteHistoryTest, JobOfOneMinuteIsKept)
{
    BobWorks("08:00 AM", "08:01 AM");
    EXPECT_EQ(StoredHours(), "0.02");
}

TEST_F(WriteHistoryTest, TwentyMinutesAreAThirdOfAnHour)
{
    BobWorks("08:00 AM", "08:20 AM");
    EXPECT_EQ(StoredHours(), "0.33");
}

TEST_F(WriteHistoryTest, FortyMinutesAreTwoThirdsOfAnHour)
{
    BobWorks("08:00 AM", "08:40 AM");
    EXPECT_EQ(StoredHours(), "0.67");
}

TEST_F(WriteHistoryTest, FiftyNineMinutesAreAlmostAnHour)
{
    BobWorks("08:00 AM", "08:59 AM");
    EXPECT_EQ(StoredHours(), "0.98");
}

TEST_F(WriteHistoryTest, JobAcrossMidnightCountsTheClockDifferenceWithoutDates)
{
    BobWorks("11:00 PM", "01:00 AM");
    EXPECT_EQ(StoredHours(), "22");
}

TEST_F(WriteHistoryTest, MissingOrderNumbersAreWrittenAsZero)
{
    Given({BobOnJob("08:00 AM")
               .With(LDEmp::WONumber.name, base::Null{})
               .With(LDEmp::WOID.name, base::Null{}),
           RepairOrder(1001)});
    CloseAt("09:00 AM");
    const std::vector<Record> jobs = Jobs();
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0][LDHistory::WONumb], 0);
    EXPECT_EQ(jobs[0][LDHistory::WOID], 0);
}

// A shop whose board was made by hand, with texts for the numbers: it is kept as it is.
TEST_F(WriteHistoryTest, OrderNumbersThatAreNoNumbersAreWrittenAsZero)
{
    disk.Remove(DatabasePath());
    MakeManagementDatabase();
    {
        dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
        dao::TableDef board("LDEmp");
        for (const dao::FieldDef& field : ProgramTables().front().Fields()) {
            const bool number = field.name == LDEmp::WONumber.name || field.name == "WOID";
            board.Append(number ? dao::TableDef::CreateField(field.name, dao::FieldType::Text, 20)
                                : field);
        }
        database.Append(board);
        for (const dao::TableDef& table : ProgramTables())
            if (table.Name() != "LDEmp") database.Append(table);
    }
    Given(
        {BobOnJob("08:00 AM").With(LDEmp::WONumber.name, "n/a").With(LDEmp::WOID.name, "none yet"),
         RepairOrder(1001)});
    CloseAt("09:00 AM");
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0][LDHistory::WONumb], 0);
    EXPECT_EQ(Jobs()[0][LDHistory::WOID], 0);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteHistoryTest, StoredJobShowsAtOnceInBothViews)
{
    BobWorks("08:00 AM", "09:00 AM");
    EXPECT_EQ(shop.window.grdDaily.RowCount(), 1);
    ASSERT_EQ(shop.window.lstHistory.ListCount(), 1);
    EXPECT_EQ(shop.window.lstHistory.List(0), "1001   1999 Ford");
}

TEST_F(WriteHistoryTest, BoardAndEmployeeRecordStayAsTheyWere)
{
    Given({BobOnJob("08:00 AM"), RepairOrder(1001)});
    const Record before = EmployeeRecord("Jones, Bob");
    CloseAt("09:00 AM");
    EXPECT_EQ(EmployeeRecord("Jones, Bob"), before);
    EXPECT_EQ(Board("Jones, Bob", LDEmp::Customer), "Evans, Brian");
}

TEST_F(WriteHistoryTest, JobWithoutStartIsReportedOnceAndLeavesNoRow)
{
    Given({BobOnJob("08:00 AM").With(LDEmp::StartJob.name, base::Null{}), RepairOrder(1001)});
    CloseAt("09:00 AM");
    EXPECT_TRUE(Jobs().empty());
    EXPECT_EQ(Reports(), (std::vector<std::string>{"94 Sub frmLodrin!WriteHistory()"}));
}

TEST_F(WriteHistoryTest, SecondJobOfTheDayIsPostedFromItsOwnRow)
{
    BobWorks("08:00 AM", "09:00 AM");
    shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
    At("10:00 AM");
    lodrin::WriteHistory(shop);
    const std::vector<Record> lines = LaborLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1][lodrin::Labor::HrsFlagged], 2.0);
}

TEST_F(WriteHistoryTest, WithoutHistorySetEveryStatementIsReportedAndNothingEscapes)
{
    lodrin::WriteHistory(shop);
    for (const std::string& report : Reports())
        EXPECT_EQ(report, "91 Sub frmLodrin!WriteHistory()");
    EXPECT_GE(Reports().size(), 9U);
}

}  // namespace
