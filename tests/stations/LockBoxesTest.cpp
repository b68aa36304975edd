// SPDX-License-Identifier: Apache-2.0
// What the program shows when another machine keeps a record, a page or a table locked.
#include "data/Tables.h"
#include "jet/catalog/Catalog.h"
#include "jet/io/StdFile.h"
#include "jet/locks/LockBytes.h"
#include "jet/locks/LockFile.h"
#include "tests/stations/Station.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopWorld.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

using namespace tests;
using jet::locks::Region;
using jet::locks::StartOf;
using lodrin::LDEmp;
using lodrin::WorkOrder;

// The box's text: the error's, and behind it, run together, when it was.
std::string Box(const std::string& text)
{
    return text + "'3/15/2004:9:00:00 AM";
}

class LockBoxesTest : public testing::Test {
protected:
    LockBoxesTest()
    {
        world.MakeDatabase();
        world.Given({Employee("Jones, Bob", 8), RepairOrder(1001), RepairOrder(1002)});
        world.At("08:00 AM").Select("Jones, Bob").Picks("BL", "Body").Starts(1001);
        world.At("09:00 AM").Select("Jones, Bob");
        world.fakes.prompts.TakeAnyBox();
        world.pause = [this](std::chrono::milliseconds) { ++pauses; };
    }

    // Another machine at work until the test ends.
    void Meanwhile(std::vector<std::string> words)
    {
        words.insert(words.begin() + 1, folder.Path().string());
        other = Station(words);
        ASSERT_EQ(other->Line(), "ready");
    }
    void Lock(const std::string& machine, std::uint64_t offset, std::uint64_t length)
    {
        Meanwhile({"lock", machine, std::to_string(offset), std::to_string(length)});
    }

    // The page on which a table's definition begins, and the one of its first row.
    [[nodiscard]] jet::format::PageNumber DefinitionOf(const char* table) const
    {
        return Open(table).rows->Definition().page;
    }
    [[nodiscard]] jet::format::PageNumber FirstRowOf(const char* table) const
    {
        const auto opened = Open(table);
        const auto rows = opened.rows->Scan();
        if (!rows->Next()) throw std::logic_error("no row");
        return rows->Id().page;
    }
    [[nodiscard]] jet::catalog::OpenTable Open(const char* table) const
    {
        jet::io::StdFileSystem files;
        const auto pager = jet::pages::Pager::Open(files, (folder.Path() / "Kelvaro.mdb").string(),
                                                   jet::io::OpenMode::ReadOnly);
        return jet::catalog::Catalog(pager).Open(table);
    }

    // Bob changes to the other order. What he is shown, each text once, and in order.
    std::vector<std::string> BoxesOfTheJobChange()
    {
        world.Picks("RL", "Paint").Starts(1002);
        std::vector<std::string> texts;
        for (const platform::Box& box : world.fakes.prompts.boxes) {
            EXPECT_EQ(box.title, "Lodrin");
            EXPECT_EQ(box.icon, platform::Icon::None);
            if (texts.empty() || texts.back() != box.text) texts.push_back(box.text);
        }
        return texts;
    }

    // The log says nothing of what was shown in a box.
    void ExpectNoLine(const std::string& number)
    {
        for (const std::string& report : world.Reports())
            EXPECT_NE(report.substr(0, number.size()), number) << report;
    }

    ScratchFolder folder;
    ShopWorld world{folder.Path(), "FRONT-DESK"};
    std::optional<Process> other;
    int pauses = 0;
};

TEST_F(LockBoxesTest, ARecordThatAnotherEditsIsShownWithUserAndMachine)
{
    Meanwhile({"hold", "BAY-2", "SELECT * FROM LDEmp"});
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{
                  Box("Could not update; currently locked by user 'Admin' on machine 'BAY-2'.")});
    ExpectNoLine("3260");
    EXPECT_EQ(pauses, jet::locks::kTries - 1);
    EXPECT_EQ(world.shop.values.LastErrNumber != 0, true);
    EXPECT_EQ(world.EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], base::Value(1001));
    EXPECT_EQ(world.LaborLines().size(), 1U) << "the closed job was posted before";
}

// The other way round: what our program edits, another cannot.
TEST_F(LockBoxesTest, WhatOurProgramEditsAnotherCannot)
{
    dao::Database database = world.engine.DefaultWorkspace().OpenDatabase(world.DatabasePath());
    dao::Recordset rows = database.OpenRecordset("SELECT * FROM LDEmp");
    rows.Edit();
    const auto begin = std::chrono::steady_clock::now();
    Process station = Station({"hold", folder.Path().string(), "BAY-2", "SELECT * FROM LDEmp"});
    EXPECT_EQ(
        station.Line().substr(0, 85),
        "error 3260 Could not update; currently locked by user 'Admin' on machine 'FRONT-DESK'");
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    EXPECT_GT(took.count(), 1.8) << "it waits as Jet does";
    EXPECT_EQ(station.Wait(), 3);
}

TEST_F(LockBoxesTest, APageThatAnotherReadsIsShownWithUserAndMachine)
{
    Lock("BAY-2", StartOf(Region::Pages, FirstRowOf("LDEmp")), 1);
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{
                  Box("Could not save; currently locked by user 'Admin' on machine 'BAY-2'.")});
    ExpectNoLine("3186");
}

TEST_F(LockBoxesTest, WhoeverHasNoNameIsNotNamed)
{
    Lock("-", StartOf(Region::Pages, FirstRowOf("LDEmp")), 256);
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{Box("Could not update; currently locked.")});
    ExpectNoLine("3218");
}

TEST_F(LockBoxesTest, AReaderWithoutANameIsNotNamed)
{
    Lock("-", StartOf(Region::Pages, FirstRowOf("LDEmp")), 1);
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{Box("Could not save; currently locked by another user.")});
    ExpectNoLine("3046");
}

TEST_F(LockBoxesTest, ATableThatAnotherKeepsIsShownWithUserAndMachine)
{
    Lock("BAY-2", StartOf(Region::TableReaders, DefinitionOf("Labor")), 256);
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{
                  Box("Table 'Labor' is exclusively locked by user 'Admin' on machine 'BAY-2'.")});
    ExpectNoLine("3189");
    EXPECT_TRUE(other->Runs());
}

TEST_F(LockBoxesTest, ATableThatAnotherLetsNobodyWriteIsShownWithUserAndMachine)
{
    Lock("BAY-2", StartOf(Region::TableDenial, DefinitionOf("LDEmp")), 1);
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{Box("Could not lock table 'LDEmp'; currently in use by user "
                                           "'Admin' on machine 'BAY-2'.")});
    ExpectNoLine("3262");
}

TEST_F(LockBoxesTest, ARecordThatAnotherSessionOfThisProgramEditsIsShown)
{
    dao::Workspace second = world.engine.CreateWorkspace("Second", "admin", "");
    dao::Database database = second.OpenDatabase(world.DatabasePath());
    dao::Recordset rows = database.OpenRecordset("SELECT * FROM LDEmp");
    rows.Edit();
    EXPECT_EQ(BoxesOfTheJobChange(),
              std::vector<std::string>{
                  Box("Could not update; currently locked by another session on this machine.")});
    ExpectNoLine("3188");
    EXPECT_EQ(pauses, 0) << "nobody waits for himself";
}

TEST_F(LockBoxesTest, AMachineThatIsSwitchedOffKeepsNothingLocked)
{
    Meanwhile({"hold", "BAY-2", "SELECT * FROM LDEmp"});
    other->Kill();
    EXPECT_EQ(BoxesOfTheJobChange(), std::vector<std::string>{});
    EXPECT_EQ(world.EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], base::Value(1002));
    jet::io::StdFileSystem files;
    EXPECT_SPOTLESS(files, (folder.Path() / "Kelvaro.mdb").string());
}

}  // namespace
