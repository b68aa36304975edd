// SPDX-License-Identifier: Apache-2.0
// PowerCutTest: a job change, a break and an end of day during which the machine stops, at every
// operation of its disk.
#include "tests/support/PowerCut.h"

#include "data/Tables.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using namespace tests;
using lodrin::WorkOrder;

constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";
constexpr std::size_t kBob = 0;         // his row in LDEmp
constexpr std::size_t kFirstOrder = 0;  // the row of 1001 in WorkOrder
constexpr std::size_t kOrder = 1;       // the row of 1002

// Bob has worked on 1001 since eight. Ann has a closed job, with its labor line, and works on 1003.
void MakeShop(jet::io::MemoryFileSystem& disk)
{
    ShopWorld world(disk);
    world.MakeDatabase();
    world.Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001),
                 RepairOrder(1002).With(WorkOrder::DeptSequence, std::int16_t{30}),
                 RepairOrder(1003)});
    world.At("07:00 AM").Select("Smith, Ann").Picks("ML", "Detail").Starts(1001);
    world.At("08:00 AM").Picks("BL", "Paint").Starts(1003);
    world.Select("Jones, Bob").Picks("BL", "Body").Starts(1001);
}

// A row that one store adds to its table, or the fields that it changes in a row of it; all of them
// when none is named.
constexpr std::size_t kAdded = static_cast<std::size_t>(-1);
struct Store {
    std::string table = {};
    std::size_t row = kAdded;
    std::vector<std::string_view> fields = {};
};

// What Bob does at nine o'clock, and the stores it consists of, in their order.
struct Act {
    const char* name;
    void (*run)(ShopWorld& world);
    std::vector<Store> stores;
};

// After a cut no repair order can be found any more, and he may be told so.
void MayMissTheOrder(ShopWorld& world)
{
    world.fakes.prompts.Expect(
        "The RO you selected no long exists in the database, or is not accessable.");
}

const std::vector<Act>& Acts()
{
    const std::vector<Store> leaving{
        {"WorkOrder", kFirstOrder, {WorkOrder::Progress}},
        {"LDHistory"},
        {"Labor"},
        {"WorkOrder", kFirstOrder, {WorkOrder::BodyWorked, WorkOrder::BodyCost}},
        {"LDEmp", kBob}};
    std::vector<Store> endOfDay = leaving;
    endOfDay.push_back({"LDTotals"});
    static const std::vector<Act> acts{
        {"JobChange",
         [](ShopWorld& world) { world.Picks("RL", "Paint").Starts(1002); },
         {{"LDHistory"},
          {"Labor"},
          {"WorkOrder", kOrder, {WorkOrder::BodyWorked, WorkOrder::BodyCost}},
          {"WorkOrder", kOrder, {WorkOrder::RLTech}},
          {"WorkOrder", kOrder, {WorkOrder::AuditNotes}},
          {"WorkOrder", kOrder, {WorkOrder::DeptSequence}},
          {"WorkOrder", kOrder, {WorkOrder::Started}},
          {"WorkOrder", kOrder, {WorkOrder::Arrived}},
          {"LDEmp", kBob}}},
        {"Break",
         [](ShopWorld& world) {
             MayMissTheOrder(world);
             world.ConfirmsProgress().GoesOnBreak();
         },
         leaving},
        {"EndOfDay",
         [](ShopWorld& world) {
             world.IsSure().ConfirmsProgress();
             MayMissTheOrder(world);
             world.EndsDay();
         },
         endOfDay}};
    return acts;
}

void PrepareChange(ShopWorld& world)
{
    world.At("09:00 AM").Select("Jones, Bob");
}

Contents StoredIn(jet::io::MemoryFileSystem& files)
{
    ShopWorld reader(files);
    return reader.Stored();
}

// Replaces some fields of a row, or all, by those of a later state.
void Take(Record& row, const Record& later, const std::vector<std::string_view>& names)
{
    for (std::size_t i = 0; i < row.fields.size(); ++i) {
        if (names.empty() ||
            std::find(names.begin(), names.end(), row.fields[i].first) != names.end())
            row.fields[i].second = later.fields[i].second;
    }
}

// The whole database before the act and after each of its stores, in their order.
std::vector<Contents> StatesOf(const Act& act, const Contents& before, const Contents& after)
{
    std::vector<Contents> states{before};
    for (const Store& store : act.stores) {
        states.push_back(states.back());
        std::vector<Record>& rows = states.back().at(store.table);
        const std::vector<Record>& later = after.at(store.table);
        if (store.row == kAdded)
            rows.push_back(later.back());
        else
            Take(rows.at(store.row), later.at(store.row), store.fields);
    }
    return states;
}

class PowerCutTest : public ::testing::TestWithParam<std::tuple<Act, PowerCut>> {
protected:
    PowerCutTest()
    {
        MakeShop(shop_);
        jet::io::MemoryFileSystem undisturbed;
        CopyDatabase(shop_, kDatabase, undisturbed);
        {
            ShopWorld world(undisturbed);
            PrepareChange(world);
            ThisAct().run(world);
            EXPECT_TRUE(world.Reports().empty());
        }
        after_ = StoredIn(undisturbed);
        states_ = StatesOf(ThisAct(), StoredIn(shop_), after_);
    }

    // Stops the machine at the operation, and copies what it finds at its next start. False when
    // the change needed no such operation.
    bool CutAt(std::size_t operation, jet::io::MemoryFileSystem& found)
    {
        jet::io::MemoryFileSystem memory;
        CopyDatabase(shop_, kDatabase, memory);
        FaultFileSystem disk(memory);
        ShopWorld world(disk);
        PrepareChange(world);
        disk.PullThePlugAfter(operation, cut_.last, cut_.unflushed);
        ThisAct().run(world);
        const bool cut = disk.PowerIsOut();
        // The end of the last journal is nobody's loss.
        EXPECT_TRUE(cut || world.Reports().empty());
        disk.Reboot();
        CopyDatabase(memory, kDatabase, found);
        return cut;
    }

    // How many stores of the change the database holds, all before them included and nothing else.
    [[nodiscard]] std::size_t StoresIn(const Contents& found) const
    {
        const auto state = std::find(states_.begin(), states_.end(), found);
        return static_cast<std::size_t>(state - states_.begin());
    }

    // The shop goes on where it stopped.
    static void ExpectWorkGoesOn(jet::io::MemoryFileSystem& files)
    {
        ShopWorld world(files);
        world.At("09:30 AM").Select("Jones, Bob").Picks("BL", "Body").Starts(1003);
        EXPECT_EQ(world.Reports(), std::vector<std::string>{});
        EXPECT_EQ(world.Order(1003)[WorkOrder::DeptSequence], base::Value(std::int16_t{30}));
    }

    [[nodiscard]] static const Act& ThisAct() { return std::get<Act>(GetParam()); }

    const PowerCut cut_ = std::get<PowerCut>(GetParam());
    jet::io::MemoryFileSystem shop_;
    Contents after_;
    std::vector<Contents> states_;
};

INSTANTIATE_TEST_SUITE_P(Cuts, PowerCutTest,
                         ::testing::Combine(::testing::ValuesIn(Acts()),
                                            ::testing::ValuesIn(kPowerCuts)),
                         [](const auto& each) {
                             return std::get<Act>(each.param).name +
                                    NameOf(std::get<PowerCut>(each.param));
                         });

TEST_P(PowerCutTest, StoresOfTheUndisturbedActAddUpToTheWhole)
{
    EXPECT_EQ(states_.back(), after_);
    for (std::size_t i = 1; i < states_.size(); ++i)
        EXPECT_NE(states_[i], states_[i - 1]) << "store " << i << " changes nothing";
}

TEST_P(PowerCutTest, ActSurvivesStoreByStoreWhereverTheMachineStops)
{
    std::set<std::size_t> seen;
    std::size_t operation = 0;
    std::size_t last = 0;
    for (bool cut = true; cut; ++operation) {
        SCOPED_TRACE("operation " + std::to_string(operation));
        ASSERT_LT(operation, 1000U);
        jet::io::MemoryFileSystem found;
        cut = CutAt(operation, found);
        const std::size_t stores = StoresIn(StoredIn(found));
        ASSERT_LT(stores, states_.size()) << "rows that no store of the change leaves";
        EXPECT_FALSE(found.Exists(std::string(kDatabase) + ".journal.set-aside"));
        EXPECT_SPOTLESS(found, kDatabase);
        EXPECT_GE(stores, last) << "a later cut keeps less";
        if (operation % 3 == 0) {  // often enough to meet every kind of operation
            ExpectWorkGoesOn(found);
            EXPECT_SPOTLESS(found, kDatabase);
        }
        last = stores;
        seen.insert(stores);
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(operation, 20U);
    EXPECT_EQ(last, states_.size() - 1) << "the change without a cut is not complete";
    EXPECT_EQ(seen.size(), states_.size()) << "the cuts did not reach every store";
    RecordProperty("operations", static_cast<int>(operation));
}

}  // namespace
