// SPDX-License-Identifier: Apache-2.0
// EmployeeRowTest: an employee's record and his board row are written together.
#include "floor/EmployeeRow.h"

#include "app/ResumeNext.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;

class EmployeeRowTest : public ShopFixture {
protected:
    EmployeeRowTest()
    {
        Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7)});
        Open();
    }

    lodrin::ResumeNext attempt{shop, "Sub frmLodrin!StartJob()"};
    dao::Recordset& employee = shop.state.employees;
    platform::Grid& board = shop.window.grdEmp;
    lodrin::EmployeeRow row{attempt, employee, board};

    void StandOn(const char* name)
    {
        employee.FindFirst("Name = '" + std::string(name) + "'");
        board.SetRow(std::string(name) == "Jones, Bob" ? 1 : 2);
    }
};

TEST_F(EmployeeRowTest, BoardShowsTheValueAsTheRecordHoldsIt)
{
    StandOn("Smith, Ann");
    row.Edit();
    EXPECT_TRUE(board.allowEdit);
    row.Write(LDEmp::StartJob, [] { return "08:05 AM"; });
    EXPECT_TRUE(board.Value(LDEmp::StartJob.column).IsDate());
    row.Save();
    EXPECT_FALSE(board.allowEdit);
    EXPECT_EQ(EmployeeRecord("Smith, Ann").Text(LDEmp::StartJob.name), "8:05:00 AM");
    EXPECT_EQ(employee["Name"].Value(), base::Value("Smith, Ann"));
}

TEST_F(EmployeeRowTest, RefusedValueLeavesTheBoardAsTheRecordIs)
{
    StandOn("Smith, Ann");
    row.Edit();
    row.Write(LDEmp::VehDesc, [] { return std::string(101, 'x'); });
    row.Write(LDEmp::Customer, [] { return "Evans, Brian"; });
    row.Save();
    EXPECT_EQ(board.Text(LDEmp::VehDesc.column), "");
    EXPECT_EQ(EmployeeRecord("Smith, Ann")[LDEmp::Customer.name], "Evans, Brian");
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3163 Sub frmLodrin!StartJob()"}));
}

TEST_F(EmployeeRowTest, ValueThatCannotBeReadFailsInsideItsStatement)
{
    dao::Recordset none;
    StandOn("Smith, Ann");
    row.Edit();
    row.Write(LDEmp::VehDesc, none["ServiceItemDescriptionL1"]);
    row.Save();
    EXPECT_EQ(Reports(), (std::vector<std::string>{"91 Sub frmLodrin!StartJob()"}));
}

TEST_F(EmployeeRowTest, RecordThatCouldNotBeEditedIsNotWrittenThroughTheBoard)
{
    StandOn("Smith, Ann");
    row.Write(LDEmp::Customer, [] { return "Evans, Brian"; });
    EXPECT_EQ(board.Text(LDEmp::Customer.column), "");
    EXPECT_EQ(EmployeeRecord("Smith, Ann")[LDEmp::Customer.name], "");
    EXPECT_TRUE(Reports().empty());
}

// A closed job that stayed on the board would be closed, and paid, once more.
TEST_F(EmployeeRowTest, ClosedJobGoesFromTheBoardAlsoWhenTheRecordCannotBeEdited)
{
    StandOn("Smith, Ann");
    row.Edit();
    row.Write(LDEmp::Customer, [] { return "Evans, Brian"; });
    row.Write(LDEmp::WOID, [] { return 6001; });
    row.Save();
    row.ClearJob();
    EXPECT_EQ(board.Text(LDEmp::Customer.column), "");
    EXPECT_EQ(board.Text(LDEmp::WOID.column), "");
    EXPECT_EQ(EmployeeRecord("Smith, Ann")[LDEmp::Customer.name], "Evans, Brian");
}

TEST_F(EmployeeRowTest, FailedStoreDoesNotLeadBackToTheRecordStoredBefore)
{
    StandOn("Jones, Bob");
    row.Edit();
    row.Write(LDEmp::GLType, [] { return "BL"; });
    row.Save();
    StandOn("Smith, Ann");
    row.Save();
    EXPECT_EQ(employee["Name"].Value(), base::Value("Smith, Ann"));
}

}  // namespace
