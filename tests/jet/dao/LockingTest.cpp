// SPDX-License-Identifier: Apache-2.0
// Two programs on one file: who edits keeps the others out, as long as he edits and no longer.
#include "base/Convert.h"
#include "jet/locks/LockFile.h"
#include "tests/jet/dao/DaoFixture.h"

#include <algorithm>

namespace dao {
namespace {

using base::Value;

constexpr const char* kLocked =
    "3260 Could not update; currently locked by user 'Admin' on machine 'BAY-2'.";

class LockingTest : public DaoTest {
protected:
    LockingTest()
    {
        MakeEmployees();
        Add(7, "Smith, Ann");
        Add(8, "Jones, Bob");
        rows = Open("SELECT * FROM LDEmp ORDER BY EmpID");
        theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
        other = theirs.OpenRecordset("SELECT * FROM LDEmp ORDER BY EmpID");
    }

    // What the file holds, read afresh.
    std::string Hours(std::int32_t id)
    {
        Recordset found = Open("SELECT * FROM LDEmp WHERE EmpID = " + std::to_string(id));
        return Column(found, "Hrs").at(0);
    }

    DBEngine theirEngine{SettingsOf("BAY-2"), files};
    Database theirs;
    Recordset rows, other;
};

TEST_F(LockingTest, EditKeepsOthersFromTheRecord)
{
    other.Edit();
    EXPECT_EQ(FailureOf([&] { rows.Edit(); }), kLocked);
    EXPECT_EQ(rows.EditMode(), EditMode::None);
    EXPECT_EQ(waits, jet::locks::kTries - 1) << "a pause between two attempts";
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann")) << "who only reads is not kept";
}

TEST_F(LockingTest, EditKeepsOthersFromTheWholePage)
{
    other.Edit();
    rows.MoveLast();
    EXPECT_EQ(FailureOf([&] { rows.Edit(); }), kLocked);
    EXPECT_EQ(FailureOf([&] { rows.Delete(); }), kLocked);
    rows.AddNew();
    rows["EmpID"] = 9;
    EXPECT_EQ(FailureOf([&] { rows.Update(); }), kLocked);
    EXPECT_EQ(rows.EditMode(), EditMode::Add) << "a failed Update keeps the edit";
    other.CancelUpdate();
    rows.Update();
    EXPECT_EQ(Open("LDEmp").RecordCount(), 3);
}

TEST_F(LockingTest, TheLockGoesWithTheEdit)
{
    const std::vector<std::function<void()>> ends{[&] { other.Update(); },
                                                  [&] { other.CancelUpdate(); },
                                                  [&] { other.MoveNext(); },
                                                  [&] { other.MoveFirst(); },
                                                  [&] { other.MoveLast(); },
                                                  [&] { other.MovePrevious(); },
                                                  [&] { other.Refresh(); },
                                                  [&] { other.FindFirst("EmpID = 7"); },
                                                  [&] { other.Requery(); },
                                                  [&] { other.AddNew(); },
                                                  [&] { other.SetBookmark(other.Bookmark()); },
                                                  [&] { other.Close(); },
                                                  [&] {
                                                      other = theirs.OpenRecordset("LDEmp");
                                                      other.Edit();
                                                      theirs.Close();
                                                  }};
    for (std::size_t i = 0; i < ends.size(); ++i) {
        if (i + 2 < ends.size()) other.MoveFirst();
        other.Edit();
        ASSERT_EQ(FailureOf([&] { rows.Edit(); }), kLocked) << i;
        ends[i]();
        EXPECT_EQ(FailureOf([&] { rows.Edit(); }), "") << i;
        rows.CancelUpdate();
        if (i + 2 == ends.size()) other = theirs.OpenRecordset("SELECT * FROM LDEmp");
    }
}

TEST_F(LockingTest, WhoWaitsLongEnoughGetsTheLock)
{
    other.Edit();
    whileWaiting = [&] {
        if (waits == 3) other.CancelUpdate();
    };
    rows.Edit();
    EXPECT_EQ(waits, 3);
    EXPECT_EQ(rows.EditMode(), EditMode::InProgress);
}

TEST_F(LockingTest, WhoWaitsLearnsThatTheRecordChanged)
{
    other.Edit();
    other["Hrs"] = 5.0;
    whileWaiting = [&] {
        if (waits == 3) other.Update();
    };
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3197);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 0);
    rows["Hrs"] = base::Plus(rows["Hrs"].Value(), Value(1.0));
    rows.Update();
    EXPECT_EQ(Hours(7), "6");
}

TEST_F(LockingTest, AnUpdateThatWaitsIsWorkedOutOnTheNewestPages)
{
    Recordset added = Open("LDEmp");
    added.AddNew();
    added["EmpID"] = 9;
    other.Edit();
    other["Name"] = "Smith-Miller, Ann Catherine";
    whileWaiting = [&] {
        if (waits == 1) other.Update();
    };
    added.Update();
    Recordset all = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(Column(all, "Name"),
              (std::vector<std::string>{"Smith-Miller, Ann Catherine", "Jones, Bob", ""}));
}

TEST_F(LockingTest, AStatementThatMayPassOverLockedRecordsDoes)
{
    other.Edit();
    database.Execute("UPDATE LDEmp SET Hrs = Hrs + 1 WHERE EmpID = 8");
    EXPECT_EQ(database.RecordsAffected(), 0);
    EXPECT_EQ(FailureOf([&] { database.Execute("DELETE FROM LDEmp", kFailOnError); }), kLocked);
    other.CancelUpdate();
    database.Execute("UPDATE LDEmp SET Hrs = Hrs + 1 WHERE EmpID = 8");
    EXPECT_EQ(Hours(8), "1");
}

// The sum is worked out when nobody else can change the record any more.
TEST_F(LockingTest, AStatementAddsToWhatIsStoredThen)
{
    other.Edit();
    other["Hrs"] = 10.0;
    whileWaiting = [&] {
        if (waits == 1) other.Update();
    };
    database.Execute("UPDATE LDEmp SET Hrs = Hrs + 1 WHERE EmpID = 7");
    EXPECT_EQ(Hours(7), "11");
}

TEST_F(LockingTest, AStatementLeavesRecordsThatNoLongerFit)
{
    other.Edit();
    other["Hrs"] = 10.0;
    whileWaiting = [&] {
        if (waits == 1) other.Update();
    };
    database.Execute("UPDATE LDEmp SET Name = 'none' WHERE Hrs = 0 AND EmpID = 7", kFailOnError);
    EXPECT_EQ(database.RecordsAffected(), 0);
    EXPECT_EQ(Hours(7), "10");
}

TEST_F(LockingTest, SessionsOfOneProgramKeepEachOtherOut)
{
    Workspace second = engine.CreateWorkspace("Second", "admin", "");
    Database again = second.OpenDatabase(kFile);
    Recordset twin = again.OpenRecordset("SELECT * FROM LDEmp ORDER BY EmpID");
    rows.Edit();
    EXPECT_EQ(ErrorOf([&] { twin.Edit(); }), 3188);
    twin.MoveLast();
    EXPECT_EQ(ErrorOf([&] { twin.Edit(); }), 3188) << "on the same page";
    EXPECT_EQ(ErrorOf([&] { twin.Delete(); }), 3188);
    EXPECT_EQ(waits, 0) << "nobody waits for himself";
    rows.CancelUpdate();
    EXPECT_EQ(ErrorOf([&] { twin.Edit(); }), 0);
}

TEST_F(LockingTest, SetsOfOneSessionShareAPageButNoRecord)
{
    Recordset twin = Open("SELECT * FROM LDEmp ORDER BY EmpID");
    rows.Edit();
    EXPECT_EQ(ErrorOf([&] { twin.Edit(); }), 3188);
    twin.MoveLast();
    twin.Edit();
    twin["Hrs"] = 2.0;
    twin.Update();
    rows["Hrs"] = 1.0;
    rows.Update();
    EXPECT_EQ(Hours(7), "1");
    EXPECT_EQ(Hours(8), "2");
}

// A station may know finer locks than we do; what it wrote is not overwritten unseen.
TEST_F(LockingTest, AChangeThatPassedOurLockIsNoticedByUpdate)
{
    rows.Edit();
    std::vector<std::byte>& bytes = files.Content(kFile);
    constexpr std::string_view name("S\0m\0i\0t\0h\0", 10);  // as it is stored
    const auto at = std::search(
        bytes.begin(), bytes.end(), name.begin(), name.end(),
        [](std::byte byte, char letter) { return byte == static_cast<std::byte>(letter); });
    ASSERT_NE(at, bytes.end());
    *(at + 4) = static_cast<std::byte>('y');
    bytes[0xE00 + 2 * 9] ^= std::byte{1};  // the commit word of the ninth user
    rows["Hrs"] = 3.0;
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3197);
    EXPECT_EQ(rows.EditMode(), EditMode::InProgress);
    rows.Update();
    rows.Refresh();
    EXPECT_EQ(rows["Name"].Value(), Value("Smyth, Ann"));
    EXPECT_EQ(rows["Hrs"].Value(), Value(3.0));
}

TEST_F(LockingTest, ATableInUseShowsInTheLockFile)
{
    const auto lockFile = files.Open("/shop/Kelvaro.ldb", jet::io::OpenMode::ReadWrite);
    const auto tables = [&] {
        int count = 0;
        for (std::uint64_t page = 0; page < 300; ++page) {
            for (const std::uint64_t region : {0x40000000U, 0x50000000U}) {
                if (lockFile->FindLock(region + 512 * page + 1, 1)) ++count;
            }
        }
        return count;
    };
    EXPECT_EQ(tables(), 2) << "read and written by us";
    rows.Close();
    EXPECT_EQ(tables(), 0);
}

TEST_F(LockingTest, OneWhoWantsTheFileAloneIsToldWhoHasIt)
{
    DBEngine office{SettingsOf("OFFICE"), files};
    EXPECT_EQ(
        FailureOf([&] { (void)office.DefaultWorkspace().OpenDatabase(kFile, true); }),
        "3704 You attempted to open a database that is already opened by user 'Admin' on machine "
        "'FRONT-DESK'.  Try again when the database is available.");
    EXPECT_EQ(ErrorOf([&] { (void)engine.DefaultWorkspace().OpenDatabase(kFile, true); }), 3704);
}

TEST_F(LockingTest, OneWhoHasTheFileAloneKeepsTheOthersOut)
{
    rows.Close();
    other.Close();
    database.Close();
    theirs.Close();
    EXPECT_FALSE(files.Exists("/shop/Kelvaro.ldb")) << "the last one takes it away";
    DBEngine office{SettingsOf("OFFICE"), files};
    Database alone = office.DefaultWorkspace().OpenDatabase(kFile, true);
    alone.Execute("UPDATE LDEmp SET Hrs = 4 WHERE EmpID = 7");
    EXPECT_EQ(files.Content(kFile)[0xE00], std::byte{1}) << "the first commit word is his";
    EXPECT_EQ(FailureOf([&] { (void)engine.DefaultWorkspace().OpenDatabase(kFile); }),
              "3356 You attempted to open a database that is already opened exclusively by user "
              "'Admin' on machine 'OFFICE'.  Try again when the database is available.");
    alone.Close();
    database = engine.DefaultWorkspace().OpenDatabase(kFile);
    EXPECT_EQ(Hours(7), "4");
}

// Of page 0 a program writes its own two bytes and nothing else.
TEST_F(LockingTest, OfTheFirstPageOnlyOnesOwnWordChanges)
{
    const std::vector<std::byte> before(files.Content(kFile).begin(),
                                        files.Content(kFile).begin() + 4096);
    rows.Edit();
    rows["Note"] = std::string(9000, 'x');
    rows.Update();
    other.Requery();
    other.Edit();
    other["Hrs"] = 1.0;
    other.Update();
    const std::vector<std::byte>& after = files.Content(kFile);
    for (std::size_t at = 0; at < before.size(); ++at) {
        const bool ours = at / 2 == (0xE00 + 2) / 2, his = at / 2 == (0xE00 + 4) / 2;
        if (!ours && !his) {
            EXPECT_EQ(after[at], before[at]) << at;
        }
    }
    EXPECT_NE(after[0xE02], before[0xE02]);
    EXPECT_NE(after[0xE04], before[0xE04]);
}

}  // namespace
}  // namespace dao
