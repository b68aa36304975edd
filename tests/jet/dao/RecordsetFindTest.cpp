// SPDX-License-Identifier: Apache-2.0
// Tests of the Find methods.
#include "tests/jet/dao/DaoFixture.h"

namespace dao {
namespace {

using base::Value;

class RecordsetFindTest : public DaoKindTest {
protected:
    RecordsetFindTest()
    {
        MakeEmployees();
        Add(7, "Smith, Ann");
        Add(8, "Jones, Bob");
        Add(9, "");
        Add(10, base::Null());
        rows = Open("SELECT * FROM LDEmp");
    }

    // EmpID of the row found, 0 for no match.
    [[nodiscard]] int Found(std::string_view criteria)
    {
        rows.FindFirst(criteria);
        return rows.NoMatch() ? 0 : *rows["EmpID"].Value().As<std::int32_t>();
    }

    [[nodiscard]] std::string Failing(std::string_view criteria)
    {
        return FailureOf([&] { rows.FindFirst(criteria); });
    }

    Recordset rows;
};

INSTANTIATE_TEST_SUITE_P(Kinds, RecordsetFindTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RecordsetFindTest, FindsByNumberAndText)
{
    EXPECT_EQ(Found("EmpID = 8"), 8);
    EXPECT_EQ(Found("[EmpID] = 9"), 9);
    EXPECT_EQ(Found("EmpID = -1"), 0);
    EXPECT_EQ(Found("Name = 'JONES, BOB'"), 8);
    EXPECT_EQ(Found("Name = 'smith, ann   '"), 7);
    EXPECT_EQ(Found("Name Like 'S*'"), 7);
    EXPECT_EQ(Found("EmpID = 8 And Name Is Not Null"), 8);
}

TEST_P(RecordsetFindTest, EmptyTextMatchesEmptyTextAndNotNull)
{
    EXPECT_EQ(Found("Name = ''"), 9);
    EXPECT_EQ(Found("Name Is Null"), 10);
}

TEST_P(RecordsetFindTest, NothingFoundLeavesThePosition)
{
    rows.FindFirst("EmpID = 8");
    rows.FindFirst("EmpID = 99");
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{8}));
}

TEST_P(RecordsetFindTest, NextAndPreviousGoOnFromTheCurrentRow)
{
    rows.FindFirst("EmpID > 7");
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{8}));
    rows.FindNext("EmpID > 7");
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{9}));
    rows.FindLast("EmpID > 7");
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{10}));
    rows.FindPrevious("EmpID < 9");
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{8}));
    rows.MoveLast();
    rows.FindNext("EmpID > 0");
    EXPECT_TRUE(rows.NoMatch());
    rows.MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows.FindNext("EmpID = 7"); }), 3021);
}

TEST_P(RecordsetFindTest, FaultsHaveTheirNumbersAndChangeNothing)
{
    rows.FindFirst("EmpID = 99");
    rows.MoveLast();
    EXPECT_EQ(Failing("EmpID = "), "3077 Syntax error (missing operator) in expression.");
    EXPECT_EQ(Failing("EmpID = abc"), "3070 " + base::ErrorText(3070, {"abc"}));
    EXPECT_EQ(Failing("EmpID = '7'"), "3464 Data type mismatch in criteria expression.");
    EXPECT_EQ(Failing("Name = 'O'Neil'"), "3077 Syntax error (missing operator) in expression.");
    EXPECT_EQ(Failing("Name = 'BL"), "3077 Syntax error in string in expression.");
    EXPECT_EQ(Failing("").substr(0, 4), "3077");
    EXPECT_EQ(Failing("Nz(EmpID, 0) = 1"), "3085 Undefined function 'Nz' in expression.");
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{10}));
}

TEST_P(RecordsetFindTest, SeesTheStoredValuesAndOwnAdditions)
{
    database.Execute("UPDATE LDEmp SET Hrs = 5 WHERE EmpID = 9");
    EXPECT_EQ(Found("Hrs = 5"), 9);
    EXPECT_EQ(rows["Hrs"].Value(), Value(5.0));
    rows.AddNew();
    rows["EmpID"] = std::int32_t{77};
    rows.Update();
    EXPECT_EQ(Found("EmpID = 77"), 77);
}

TEST_P(RecordsetFindTest, PassesOverDeletedRows)
{
    rows.FindFirst("EmpID = 8");
    rows.Delete();
    EXPECT_EQ(Found("EmpID = 8"), 0);
    database.Execute("DELETE FROM LDEmp WHERE EmpID = 9");
    EXPECT_EQ(Found("EmpID = 9"), 0);
}

TEST_P(RecordsetFindTest, SweepThatDeletesWhatIsNotFoundElsewhere)
{
    Recordset keep = Open("SELECT EmpID FROM LDEmp WHERE EmpID = 8");
    rows.MoveFirst();
    while (!rows.Eof()) {
        keep.FindFirst("EmpID = " + std::to_string(*rows["EmpID"].Value().As<std::int32_t>()));
        if (keep.NoMatch()) rows.Delete();
        rows.MoveNext();
    }
    Recordset left = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(Column(left, "EmpID"), std::vector<std::string>{"8"});
}

}  // namespace
}  // namespace dao
