// SPDX-License-Identifier: Apache-2.0
// GridTest: a grid over a record set of the real engine.
#include "platform/controls/Grid.h"

#include "data/Tables.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/ShopFixture.h"

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;

class GridTest : public ShopFixture {
protected:
    GridTest()
    {
        Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7)});
        database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
        records = database.OpenRecordset("SELECT * FROM LDEmp ORDER BY Name");
    }

    dao::Database database;
    dao::Recordset records;
    platform::Grid grid;
};

TEST_F(GridTest, BindingTakesFieldsAndRowsAndStandsOnTheFirst)
{
    grid.Bind(records);
    ASSERT_EQ(grid.ColumnCount(), 12);
    EXPECT_EQ(grid.ColumnAt(LDEmp::WONumber.column).field, "WO#");
    EXPECT_EQ(grid.ColumnAt(LDEmp::WONumber.column).caption, "WO#");
    EXPECT_EQ(grid.RowCount(), 2);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Text(LDEmp::Name.column), "Jones, Bob");
    EXPECT_EQ(records["Name"].Value(), base::Value("Jones, Bob"));
}

TEST_F(GridTest, EmptySetHasColumnsButNoRow)
{
    dao::Recordset none = database.OpenRecordset("SELECT * FROM LDEmp WHERE EmpID = 99");
    grid.Bind(none);
    EXPECT_EQ(grid.ColumnCount(), 12);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_TRUE(grid.Value(LDEmp::Name.column).IsNull());
    grid.SetValue(LDEmp::Name.column, "nobody");
}

TEST_F(GridTest, UnopenedSetIsAnUnsetObject)
{
    dao::Recordset none;
    EXPECT_EQ(ErrorOf([&] { grid.Bind(none); }), 91);
}

TEST_F(GridTest, RowsStayAsTheyWereWhenBound)
{
    grid.Bind(records);
    records.MoveLast();
    records.Delete();
    EXPECT_EQ(grid.RowCount(), 2);
    EXPECT_EQ(grid.Shown(2, LDEmp::Name.column), "Smith, Ann");
}

TEST_F(GridTest, ChangedCellGoesIntoItsOwnRecord)
{
    grid.Bind(records);
    grid.SetRow(2);
    grid.SetValue(LDEmp::Customer.column, "Evans, Brian");
    EXPECT_EQ(EmployeeRecord("Smith, Ann")[LDEmp::Customer.name], "Evans, Brian");
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::Customer.name], "");
    EXPECT_EQ(grid.Text(LDEmp::Customer.column), "Evans, Brian");
    EXPECT_EQ(records["Name"].Value(), base::Value("Smith, Ann"));
}

TEST_F(GridTest, EmptyTextIntoADateOrNumberIsNull)
{
    grid.Bind(records);
    grid.SetValue(LDEmp::EndDay.column, "04:30 PM");
    EXPECT_TRUE(grid.Value(LDEmp::EndDay.column).IsDate());
    grid.SetValue(LDEmp::EndDay.column, "");
    grid.SetValue(LDEmp::WONumber.column, "");
    grid.SetValue(LDEmp::GLType.column, "");
    EXPECT_TRUE(grid.Value(LDEmp::EndDay.column).IsNull());
    EXPECT_TRUE(EmployeeRecord("Jones, Bob")[LDEmp::EndDay.name].IsNull());
    EXPECT_TRUE(EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name].IsNull());
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::GLType.name], "");
}

TEST_F(GridTest, DuringAnEditOnlyTheCellChanges)
{
    grid.Bind(records);
    records.Edit();
    grid.SetValue(LDEmp::Customer.column, "Evans, Brian");
    EXPECT_EQ(records.EditMode(), dao::EditMode::InProgress);
    records.CancelUpdate();
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::Customer.name], "");
    EXPECT_EQ(grid.Text(LDEmp::Customer.column), "Evans, Brian");
}

TEST_F(GridTest, RefusedValueLeavesCellAndRecordAndNoPendingEdit)
{
    grid.Bind(records);
    EXPECT_EQ(ErrorOf([&] { grid.SetValue(LDEmp::EndDay.column, "never"); }), 3421);
    EXPECT_TRUE(grid.Value(LDEmp::EndDay.column).IsNull());
    EXPECT_EQ(records.EditMode(), dao::EditMode::None);
}

TEST_F(GridTest, ColumnThatDoesNotExistIs9)
{
    grid.Bind(records);
    EXPECT_EQ(ErrorOf([&] { (void)grid.Value(13); }), 9);
    EXPECT_EQ(ErrorOf([&] { (void)grid.ColumnAt(0); }), 9);
    EXPECT_EQ(ErrorOf([&] { grid.SetPosition(13, 1); }), 9);
    EXPECT_EQ(ErrorOf([&] { grid.SetRow(3); }), 380);
}

TEST_F(GridTest, MovedColumnLetsTheOthersKeepTheirOrder)
{
    grid.Bind(records);
    grid.SetPosition(3, 1);
    EXPECT_EQ(grid.ColumnAt(3).position, 1);
    EXPECT_EQ(grid.ColumnAt(1).position, 2);
    EXPECT_EQ(grid.ColumnAt(2).position, 3);
    EXPECT_EQ(grid.ColumnAt(4).position, 4);
    grid.SetPosition(3, 12);
    EXPECT_EQ(grid.ColumnAt(1).position, 1);
    EXPECT_EQ(grid.ColumnAt(12).position, 11);
}

TEST_F(GridTest, CellShowsItsValueThroughTheFormat)
{
    grid.Bind(records);
    grid.ColumnAt(LDEmp::StartDay.column).format = "hh:mm AM/PM";
    grid.SetValue(LDEmp::StartDay.column, base::Date{7.5 / 24});
    EXPECT_EQ(grid.Shown(1, LDEmp::StartDay.column), "07:30 AM");
    EXPECT_EQ(grid.Text(LDEmp::StartDay.column), "7:30:00 AM");
    EXPECT_EQ(grid.Shown(3, LDEmp::StartDay.column), "");
}

TEST_F(GridTest, EachChangeIsTold)
{
    int told = 0;
    grid.changed = [&] { ++told; };
    grid.Bind(records);
    grid.SetRow(2);
    grid.SetValue(LDEmp::Customer.column, "x");
    grid.LayoutChanged();
    grid.Reset();
    EXPECT_EQ(told, 5);
    EXPECT_EQ(grid.RowCount(), 0);
    EXPECT_EQ(grid.ColumnCount(), 0);
}

TEST_F(GridTest, RowDeletedByAnotherConnectionIsNotShown)
{
    dao::Database other = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    dao::Recordset same = other.OpenRecordset("SELECT * FROM LDEmp WHERE EmpID = 8");
    same.Delete();
    grid.Bind(records);
    EXPECT_EQ(grid.RowCount(), 1);
    EXPECT_EQ(grid.Text(LDEmp::Name.column), "Smith, Ann");
}

}  // namespace
