// SPDX-License-Identifier: Apache-2.0
// FailureSweepTest: a job change, a break and an end of day in which the n-th operation of the disk
// fails, for every n.
#include "data/Tables.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::Labor;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::WorkOrder;

constexpr int kDiskFailure = 3043;
constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";

// A shop in which Bob has worked on 1001 since eight; before that, in one that opens early, for
// half an hour on 1003.
std::vector<std::byte> ShopAtNine(bool opensEarly = false)
{
    jet::io::MemoryFileSystem disk;
    {
        ShopWorld world(disk);
        world.MakeDatabase();
        world.Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001),
                     RepairOrder(1002).With(WorkOrder::DeptSequence, std::int16_t{30}),
                     RepairOrder(1003)});
        world.Select("Jones, Bob");
        if (opensEarly) world.At("07:30 AM").Picks("BL", "Body").Starts(1003);
        world.At("08:00 AM").Picks("BL", "Body").Starts(1001);
    }
    return disk.Content(kDatabase);
}

// The shop on a disk that can be made to fail.
struct Scene {
    explicit Scene(const std::vector<std::byte>& content)
    {
        (void)memory.Create(kDatabase);
        memory.Content(kDatabase) = content;
        world.At("09:00 AM").Select("Jones, Bob");
    }

    jet::io::MemoryFileSystem memory;
    FaultFileSystem disk{memory};
    ShopWorld world{disk};
};

// What an act should leave behind, by name, and whether it did.
using Effects = std::map<std::string, bool>;

Effects EffectsOfJobChange(ShopWorld& world)
{
    const Record bob = world.EmployeeRecord("Jones, Bob");
    const Record order = world.Order(1002);
    return {{"history row", world.Jobs().size() == 1},
            {"labor line", world.LaborLines().size() == 1},
            {"hours", order[WorkOrder::BodyWorked] == base::Value(1.0)},
            {"technician", order[WorkOrder::RLTech] == base::Value(8)},
            {"note", !order[WorkOrder::AuditNotes].IsNull()},
            {"department", order[WorkOrder::DeptSequence] == base::Value(std::int16_t{70})},
            {"started", order[WorkOrder::Started].IsDate()},
            {"arrived", order[WorkOrder::Arrived].IsDate()},
            {"employee", bob[LDEmp::WONumber.name] == base::Value(1002)}};
}

Effects EffectsOfBreak(ShopWorld& world)
{
    const Record order = world.Order(1001);
    return {{"history row", world.Jobs().size() == 1},
            {"labor line", world.LaborLines().size() == 1},
            {"hours", order[WorkOrder::BodyWorked] == base::Value(1.0)},
            {"progress", order.Text(WorkOrder::Progress) == "In the paint booth"},
            {"employee", world.EmployeeRecord("Jones, Bob")[LDEmp::WOID.name].IsNull()}};
}

Effects EffectsOfEndOfDay(ShopWorld& world)
{
    Effects effects = EffectsOfBreak(world);
    effects["totals"] = world.Totals().size() == 1;
    return effects;
}

// What Bob does at nine o'clock, where its failures are reported, and the row of the order that it
// changes.
struct Act {
    const char* name;
    void (*run)(ShopWorld& world);
    Effects (*effectsIn)(ShopWorld& world);
    std::set<std::string> locations;
    std::size_t order;
};

const std::vector<Act>& Acts()
{
    static const std::vector<Act> acts{
        {"JobChange",
         [](ShopWorld& world) { world.Picks("RL", "Paint").Starts(1002); },
         EffectsOfJobChange,
         {"Sub frmLodrin!StartJob()", "Sub frmLodrin!WriteHistory()", "Sub frmLodrin!WriteLabor()"},
         1},
        {"Break",
         [](ShopWorld& world) { world.ConfirmsProgress().GoesOnBreak(); },
         EffectsOfBreak,
         {"Sub frmLodrin!cmdBreak_Click()", "Sub frmLodrin!WriteHistory()",
          "Sub frmLodrin!WriteLabor()"},
         0},
        {"EndOfDay",
         [](ShopWorld& world) { world.IsSure().ConfirmsProgress().EndsDay(); },
         EffectsOfEndOfDay,
         {"Sub frmLodrin!cmdEndDay_Click()", "Sub frmLodrin!WriteHistory()",
          "Sub frmLodrin!WriteLabor()"},
         0}};
    return acts;
}

class FailureSweepTest : public ::testing::TestWithParam<Act> {
protected:
    std::set<std::string> lost;       // effects that a failure cost, over the whole sweep
    std::set<std::string> locations;  // where failures were reported

    // One failed operation costs at most the one store it belonged to. A history row that could not
    // even be begun is no job, so nothing of it is posted either.
    std::set<std::string> ExpectAtMostOneLoss(ShopWorld& world)
    {
        std::set<std::string> missing;
        for (const auto& effect : GetParam().effectsIn(world)) {
            if (!effect.second) missing.insert(effect.first);
        }
        lost.insert(missing.begin(), missing.end());
        const std::set<std::string> wholeJob{"history row", "hours", "labor line"};
        EXPECT_TRUE(missing.size() <= 1 || missing == wholeJob)
            << ::testing::PrintToString(missing);
        return missing;
    }

    // The progress dialog alone keeps its failures to itself; and what costs nothing, as a journal
    // that is not ended, may stay unsaid.
    void ExpectReportedOnce(const std::vector<std::string>& reports,
                            const std::set<std::string>& missing)
    {
        std::size_t failures = 0;
        for (const std::string& report : reports) {
            if (report.rfind(std::to_string(kDiskFailure) + " ", 0) != 0) continue;
            ++failures;
            locations.insert(report.substr(report.find(' ') + 1));
        }
        if (failures == 0 && missing.empty()) return;
        EXPECT_EQ(failures, missing.count("progress") > 0 ? 0U : 1U) << reports.size();
    }

    // Rows that have no part in the act.
    static void ExpectBystandersUntouched(const Contents& before, const Contents& after)
    {
        for (const char* table : {"Profile", "Status", "Departments", "AutoLook"})
            EXPECT_EQ(after.at(table), before.at(table)) << table;
        EXPECT_EQ(after.at("LDEmp").at(1), before.at("LDEmp").at(1));
        for (const std::size_t order : {0U, 1U, 2U}) {
            if (order == GetParam().order) continue;
            EXPECT_EQ(after.at("WorkOrder").at(order), before.at("WorkOrder").at(order));
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Acts, FailureSweepTest, ::testing::ValuesIn(Acts()),
                         [](const auto& each) { return each.param.name; });

TEST_P(FailureSweepTest, ActWithoutFailureHasAllItsEffects)
{
    Scene scene(ShopAtNine());
    GetParam().run(scene.world);
    for (const auto& effect : GetParam().effectsIn(scene.world))
        EXPECT_TRUE(effect.second) << effect.first;
    EXPECT_TRUE(scene.world.Reports().empty());
}

TEST_P(FailureSweepTest, EachFailureIsReportedOnceAndTheRestRuns)
{
    const std::vector<std::byte> content = ShopAtNine();
    Scene untouched(content);
    const Contents before = untouched.world.Stored();

    bool failed = true;
    std::size_t failing = 0;
    for (; failed; ++failing) {
        SCOPED_TRACE("operation " + std::to_string(failing));
        Scene scene(content);
        const std::size_t start = scene.disk.Operations();
        scene.disk.FailOnce(failing, kDiskFailure);
        ASSERT_NO_THROW(GetParam().run(scene.world));
        failed = scene.disk.Operations() > start + failing;
        if (!failed) break;
        EXPECT_FALSE(scene.world.shop.window.grdEmp.allowEdit);
        // What another engine finds on the disk is what counts.
        ShopWorld reader(scene.memory);
        const std::set<std::string> missing = ExpectAtMostOneLoss(reader);
        ExpectReportedOnce(scene.world.Reports(), missing);
        ExpectBystandersUntouched(before, reader.Stored());
        EXPECT_SPOTLESS(scene.memory, kDatabase);
    }
    EXPECT_GT(failing, 20U);
    EXPECT_EQ(lost.size(), GetParam().effectsIn(untouched.world).size())
        << "the sweep did not reach every store";
    EXPECT_EQ(locations, GetParam().locations);
}

TEST_P(FailureSweepTest, NoFailurePostsAnEarlierJobOfTheDayAgain)
{
    const std::vector<std::byte> content = ShopAtNine(true);
    bool failed = true;
    for (std::size_t failing = 0; failed; ++failing) {
        SCOPED_TRACE("operation " + std::to_string(failing));
        Scene scene(content);
        const std::size_t start = scene.disk.Operations();
        scene.disk.FailOnce(failing, kDiskFailure);
        GetParam().run(scene.world);
        failed = scene.disk.Operations() > start + failing;
        const std::vector<Record> lines = ShopWorld(scene.memory).LaborLines();
        EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                                [](const Record& line) {
                                    return line[Labor::HrsFlagged] == base::Value(0.5);
                                }),
                  1);
    }
}

// A job change without one of the window's record sets.
class MissingSetTest : public ::testing::Test {
protected:
    Scene scene{ShopAtNine()};

    MissingSetTest() { scene.world.Picks("RL", "Paint"); }
};

TEST_F(MissingSetTest, WithoutWorkOrderSetTheOrderCountsAsUnknown)
{
    scene.world.shop.state.workOrders = dao::Recordset();
    scene.world.fakes.prompts.Expect(
        "The RO you selected no long exists in the database, or is not accessable.");
    scene.world.Starts(1002);
    EXPECT_EQ(scene.world.Reports(), std::vector<std::string>{"91 Sub frmLodrin!StartJob()"});
    EXPECT_TRUE(scene.world.Jobs().empty());
}

TEST_F(MissingSetTest, WithoutEmployeeSetTheOpenJobIsStillClosed)
{
    scene.world.shop.state.employees = dao::Recordset();
    scene.world.Starts(1002);
    EXPECT_EQ(scene.world.Reports(), std::vector<std::string>{"91 Sub frmLodrin!StartJob()"});
    EXPECT_EQ(scene.world.Jobs().size(), 1U);
    EXPECT_EQ(scene.world.EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], 1001);
}

TEST_F(MissingSetTest, WithoutHistorySetTheNewJobIsStillStarted)
{
    scene.world.shop.state.history = dao::Recordset();
    scene.world.Starts(1002);
    for (const std::string& report : scene.world.Reports())
        EXPECT_EQ(report, "91 Sub frmLodrin!WriteHistory()");
    EXPECT_FALSE(scene.world.Reports().empty());
    EXPECT_EQ(scene.world.EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], 1002);
}

TEST_F(MissingSetTest, WithoutDatabaseNobodyPasses)
{
    scene.world.shop.state.database.Close();
    scene.world.fakes.prompts.Expect("Invalid PIN entered");
    scene.world.Starts(1002);
    EXPECT_TRUE(scene.world.Reports().empty());
    EXPECT_EQ(scene.world.EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], 1001);
}

}  // namespace
