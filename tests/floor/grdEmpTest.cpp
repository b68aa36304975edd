// SPDX-License-Identifier: Apache-2.0
// grdEmpTest: the employee board and choosing an employee.
#include "floor/grdEmp.h"

#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;

class grdEmpTest : public ShopFixture {
protected:
    base::Date Today() const { return base::DatePartOf(fakes.clock.Now()); }
};

TEST_F(grdEmpTest, BoardShowsEightColumnsInTheirOrderAndHidesTheRest)
{
    struct Shown {
        int column;
        const char* caption;
        int width;
        const char* format;
    };
    const std::vector<Shown> expected{{3, "Employee", 2000, ""},
                                      {4, "Start Day", 900, "hh:mm AM/PM"},
                                      {12, "Type", 500, ""},
                                      {9, "Vehicle", 1700, ""},
                                      {10, "Customer", 1700, ""},
                                      {7, "WO #", 900, "#########"},
                                      {6, "Job Start", 900, "hh:mm AM/PM"},
                                      {5, "End Day", 900, "hh:mm AM/PM"}};
    Given({Employee("Jones, Bob", 8)});
    Open();
    platform::Grid& board = shop.window.grdEmp;
    ASSERT_EQ(board.ColumnCount(), 12);
    int position = 0;
    for (const Shown& shown : expected) {
        const platform::Column& column = board.ColumnAt(shown.column);
        EXPECT_EQ(column.caption, shown.caption);
        EXPECT_EQ(column.width, shown.width);
        EXPECT_EQ(column.format, shown.format);
        EXPECT_EQ(column.position, ++position);
        EXPECT_TRUE(column.visible);
    }
    for (const int hidden : {1, 2, 8, 11})
        EXPECT_FALSE(board.ColumnAt(hidden).visible);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(grdEmpTest, EmployeesStandInOrderOfNameAndHiddenNamesNever)
{
    Given({Employee("Smith, Ann", 7), Employee("@Former, Joe", 9), Employee("Jones, Bob", 8)});
    Open();
    const platform::Grid& board = shop.window.grdEmp;
    ASSERT_EQ(board.RowCount(), 2);
    EXPECT_EQ(board.Shown(1, LDEmp::Name.column), "Jones, Bob");
    EXPECT_EQ(board.Shown(2, LDEmp::Name.column), "Smith, Ann");
}

TEST_F(grdEmpTest, TimesShowWithoutDateAndOrderNumbersWithoutSeparators)
{
    Given({Employee("Jones, Bob", 8)
               .With(LDEmp::StartDay.name, base::ReadDate("07:05 AM").value())
               .With(LDEmp::StartJob.name, base::ReadDate("01:30 PM").value())
               .With(LDEmp::WONumber.name, 1234567),
           Employee("Smith, Ann", 7)});
    Open();
    EXPECT_EQ(Board("Jones, Bob", LDEmp::StartDay), "07:05 AM");
    EXPECT_EQ(Board("Jones, Bob", LDEmp::StartJob), "01:30 PM");
    EXPECT_EQ(Board("Jones, Bob", LDEmp::EndDay), "");
    EXPECT_EQ(Board("Jones, Bob", LDEmp::WONumber), "1234567");
    EXPECT_EQ(Board("Smith, Ann", LDEmp::WONumber), "");
}

TEST_F(grdEmpTest, ClickMakesTheEmployeeCurrentAndLoadsHisJobs)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), ClosedJob(7, 1001, Today())});
    Select("Smith, Ann");
    EXPECT_EQ(shop.window.lblEmpName.Caption(), "Smith, Ann");
    EXPECT_EQ(shop.state.currentEmployee, 7);
    EXPECT_EQ(shop.window.grdDaily.RowCount(), 1);
    EXPECT_EQ(shop.window.lstHistory.ListCount(), 1);
}

TEST_F(grdEmpTest, ClickOnTheCurrentRowLoadsItsJobsAgain)
{
    Given({Employee("Jones, Bob", 8)});
    Select("Jones, Bob");
    ASSERT_EQ(shop.window.lstHistory.ListCount(), 0);
    Given({ClosedJob(8, 1001, Today())});
    lodrin::grdEmp_Click(shop);
    EXPECT_EQ(shop.window.grdDaily.RowCount(), 1);
    EXPECT_EQ(shop.window.lstHistory.ListCount(), 1);
}

TEST_F(grdEmpTest, MoveWithinTheRowKeepsTheLabelButReloadsAndClearsTheBox)
{
    Given({Employee("Jones, Bob", 8)});
    Select("Jones, Bob");
    shop.window.lblEmpName.SetCaption("as it was");
    shop.window.cboRO.SetText("1001");
    Given({ClosedJob(8, 1001, Today())});
    lodrin::grdEmp_RowColChange(shop, shop.window.grdEmp.Row(), LDEmp::Name.column);
    EXPECT_EQ(shop.window.lblEmpName.Caption(), "as it was");
    EXPECT_EQ(shop.window.cboRO.Text(), "");
    EXPECT_EQ(shop.window.grdDaily.RowCount(), 1);
    EXPECT_EQ(shop.window.lstHistory.ListCount(), 1);
    EXPECT_EQ(shop.state.currentEmployee, 8);
}

TEST_F(grdEmpTest, MoveToAnotherRowShowsTheOtherName)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7)});
    Open();
    shop.window.grdEmp.SetRow(2);
    lodrin::grdEmp_RowColChange(shop, 1, LDEmp::Name.column);
    EXPECT_EQ(shop.window.lblEmpName.Caption(), "Smith, Ann");
    EXPECT_EQ(shop.state.currentEmployee, 7);
}

TEST_F(grdEmpTest, UnboundBoardReportsEachColumnItCannotLayOut)
{
    lodrin::EmpView(shop);
    EXPECT_EQ(Reports(), std::vector<std::string>(8, "9 Sub frmLodrin!EmpView()"));
}

}  // namespace
