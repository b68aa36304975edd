// SPDX-License-Identifier: Apache-2.0
#include "app/ResumeNext.h"

#include "app/ForEachRecord.h"
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "platform/Desktop.h"
#include "tests/support/ShellFixture.h"

#include <new>

namespace lodrin {
namespace {

using base::NumberedError;

void Fail(int number)
{
    throw NumberedError(number);
}

class ResumeNextTest : public tests::ShellFixture {
protected:
    const ResumeNext attempt{shop, "Sub frmLodrin!Test()"};
};

TEST_F(ResumeNextTest, AFailingStatementIsReportedAndTheNextOneRuns)
{
    bool nextRan = false;
    attempt([] { Fail(3021); });
    attempt([&] { nextRan = true; });
    EXPECT_TRUE(nextRan);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3021 Sub frmLodrin!Test()"}));
}

TEST_F(ResumeNextTest, AFailingConditionTakesTheBranchItWasToldTo)
{
    const auto failing = []() -> bool { throw NumberedError(3021); };
    EXPECT_TRUE(attempt.Test(failing, IfItFails::TakeBranch));
    EXPECT_FALSE(attempt.Test(failing, IfItFails::SkipBranch));
    EXPECT_EQ(Reports().size(), 2U);
}

TEST_F(ResumeNextTest, AConditionThatDoesNotFailIsItsAnswer)
{
    EXPECT_FALSE(attempt.Test([] { return false; }, IfItFails::TakeBranch));
    EXPECT_TRUE(attempt.Test([] { return true; }, IfItFails::SkipBranch));
}

TEST_F(ResumeNextTest, AStatementSucceedsUnlessItFailsWhichIsReported)
{
    EXPECT_TRUE(attempt.Succeeds([] {}));
    EXPECT_TRUE(Reports().empty());
    EXPECT_FALSE(attempt.Succeeds([] { Fail(3021); }));
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3021 Sub frmLodrin!Test()"}));
}

TEST_F(ResumeNextTest, AFailingAssignmentLeavesItsTarget)
{
    int target = 7;
    const auto failing = []() -> int { throw NumberedError(13); };
    attempt([&] { target = failing(); });
    EXPECT_EQ(target, 7);
}

TEST_F(ResumeNextTest, SilentlyReportsNothing)
{
    const ResumeNext silent = ResumeNext::Silently();
    silent([] { Fail(61); });
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(shop.values.LastErrNumber, 0);
}

TEST_F(ResumeNextTest, NumbersThatAreNotPositiveAreNotReported)
{
    attempt([] { Fail(-2147467259); });
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(shop.values.LastErrNumber, 0);
}

TEST_F(ResumeNextTest, MemoryThatRanOutIsError7)
{
    const ResumeNext silent = ResumeNext::Silently();
    silent([] { throw std::bad_alloc(); });
    fakes.prompts.Expect("Error 7 in Sub frmLodrin!Test() (Line = 0)\r\nwhile running Lodrin.exe "
                         "v1.00 (Build 5)\r\n\r\nError = 'Out of memory'\r\n\r\nThis message has "
                         "been copied to your clipboard for easy retreval.\r\n\r\n\r\nSelect 'OK' "
                         "and the program will attempt to continue running.");
    attempt([] { throw std::bad_alloc(); });
    EXPECT_EQ(shop.values.LastErrNumber, 7);
}

TEST_F(ResumeNextTest, TheEndOfTheProgramPassesEveryGuard)
{
    EXPECT_THROW(attempt([this] { shop.platform.program.End(); }), platform::ProgramEnded);
}

TEST_F(ResumeNextTest, AnErrorInTheTrapLeavesTheProcedureThatCalledIt)
{
    fakes.files.RefuseWrites("/Lodrin.Log", 76);
    bool nextRan = false;
    const auto procedure = [&] {
        const ResumeNext inside(shop, "Sub frmLodrin!Inside()");
        inside([] { Fail(3021); });
        nextRan = true;
    };
    // One level up 76 is a serious error of the calling statement.
    fakes.prompts.Expect(
        "Error 76 in Sub frmLodrin!Test() (Line = 0)\r\nwhile running Lodrin.exe v1.00 (Build "
        "5)\r\n\r\nError = 'Path not found'\r\n\r\nThis message has been copied to your clipboard "
        "for easy retreval.\r\n\r\n\r\nSelect 'OK' and the program will attempt to continue "
        "running.");
    attempt(procedure);
    EXPECT_FALSE(nextRan);
}

TEST_F(ResumeNextTest, ALogNobodyCanWriteLeavesEveryLevel)
{
    fakes.files.RefuseWrites("/Lodrin.Log", 75);
    const auto procedure = [&] {
        const ResumeNext inside(shop, "Sub frmLodrin!Inside()");
        inside([] { Fail(3021); });
    };
    EXPECT_THROW(attempt(procedure), NumberedError);
}

class ForEachRecordTest : public tests::ShopFixture {
protected:
    dao::Recordset History()
    {
        database_ = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
        return database_.OpenRecordset("SELECT * FROM LDHistory");
    }

    dao::Database database_;
    const ResumeNext attempt{shop, "Sub frmLodrin!Test()"};
};

TEST_F(ForEachRecordTest, RunsOnceForEachRecord)
{
    Given({tests::ClosedJob(7, 1001, {38061}), tests::ClosedJob(8, 1002, {38061})});
    dao::Recordset history = History();
    std::string employees;
    ForEachRecord(attempt, history,
                  [&] { employees += base::TextOf(history["EmpID"].Value()) + " "; });
    EXPECT_EQ(employees, "7 8 ");
    EXPECT_TRUE(Reports().empty());
}

TEST_F(ForEachRecordTest, RunsNeverForNoRecords)
{
    dao::Recordset history = History();
    ForEachRecord(attempt, history, [] { FAIL() << "no record"; });
    EXPECT_TRUE(Reports().empty());
}

TEST_F(ForEachRecordTest, StopsWhenTheEndCannotBeRead)
{
    dao::Recordset never;
    ForEachRecord(attempt, never, [] { FAIL() << "no record"; });
    EXPECT_EQ(Reports(), (std::vector<std::string>{"91 Sub frmLodrin!Test()"}));
}

TEST_F(ForEachRecordTest, StopsWhenTheMoveFails)
{
    Given({tests::ClosedJob(7, 1001, {38061}), tests::ClosedJob(8, 1002, {38061})});
    dao::Recordset history = History();
    int runs = 0;
    ForEachRecord(attempt, history, [&] {
        ++runs;
        history.Close();
    });
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(shop.values.LastErrNumber, 3420);
}

}  // namespace
}  // namespace lodrin
