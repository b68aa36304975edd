// SPDX-License-Identifier: Apache-2.0
// WriteLaborTest: a closed job is posted to the management system.
#include "labor/WriteLabor.h"

#include "base/Calendar.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/ShopFixture.h"
#include "tests/support/WatchedFileSystem.h"

#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tests;
using lodrin::Labor;
using lodrin::LDHistory;
using lodrin::Profile;
using lodrin::WorkOrder;

class WriteLaborTest : public ShopFixture {
protected:
    base::Date Today() const { return base::DatePartOf(fakes.clock.Now()); }

    // Posts the last stored job of the employee to the order.
    void Post(std::string_view employee, std::int32_t order)
    {
        Select(employee);
        shop.state.history.MoveLast();
        shop.state.workOrders.FindFirst("WorkOrderNumber = " + std::to_string(order));
        lodrin::WriteLabor(shop);
    }

    // The hours fields of the order that are not 0.
    std::vector<std::string> UsedTotals(std::int32_t order)
    {
        std::vector<std::string> used;
        for (const auto& field : Order(order).fields) {
            const bool total = field.first.ends_with("Worked") || field.first.ends_with("Cost");
            if (total && Order(order).Text(field.first) != "0") used.push_back(field.first);
        }
        return used;
    }
};

TEST_F(WriteLaborTest, LaborLineTellsTheJobWithTheNumbersCrossed)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001),
           ClosedJob(8, 1001, Today()).With(LDHistory::Hrs, 2.33)});
    Post("Jones, Bob", 1001);
    const std::vector<Record> lines = LaborLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0][Labor::EmployeeID], 8);
    EXPECT_EQ(lines[0][Labor::WONumber], EntryOf(1001));
    EXPECT_EQ(lines[0][Labor::WorkOrder], 1001);
    EXPECT_EQ(lines[0][Labor::EmpRate], base::Currency{200000});
    EXPECT_EQ(lines[0][Labor::LastName], "Jones");
    EXPECT_EQ(lines[0][Labor::FirstName], "Bob");
    EXPECT_EQ(lines[0][Labor::GLType], "BL");
    EXPECT_EQ(lines[0].Text(Labor::FlagDate), "3/15/2004");
    EXPECT_EQ(lines[0].Text(Labor::TimeIN), "8:00:00 AM");
    EXPECT_EQ(lines[0].Text(Labor::TimeOut), "9:00:00 AM");
    EXPECT_EQ(lines[0][Labor::HrsFlagged], 2.33);
    EXPECT_EQ(lines[0][Labor::MiscDesc], "1999 Ford 1001");
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 2.33);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyCost], base::Currency{466000});
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteLaborTest, EmployeeWithoutProfileGetsNoPosting)
{
    Given({Employee("Jones, Bob", 8).Without("Profile"), RepairOrder(1001),
           ClosedJob(8, 1001, Today())});
    const Record before = Order(1001);
    Post("Jones, Bob", 1001);
    EXPECT_TRUE(LaborLines().empty());
    EXPECT_EQ(Order(1001), before);
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteLaborTest, NullTotalStaysNull)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001).With(WorkOrder::BodyWorked, base::Null{}),
           ClosedJob(8, 1001, Today())});
    Post("Jones, Bob", 1001);
    EXPECT_TRUE(Order(1001)[WorkOrder::BodyWorked].IsNull());
    EXPECT_EQ(Order(1001)[WorkOrder::BodyCost], base::Currency{200000});
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteLaborTest, NullCostStaysNullAndTheHoursAreAdded)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001).With(WorkOrder::BodyCost, base::Null{}),
           ClosedJob(8, 1001, Today())});
    Post("Jones, Bob", 1001);
    EXPECT_TRUE(Order(1001)[WorkOrder::BodyCost].IsNull());
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 1.0);
}

TEST_F(WriteLaborTest, RateOfZeroPostsHoursWithoutCost)
{
    Given({Employee("Jones, Bob", 8).With(Profile::EmpRate, base::Currency{}), RepairOrder(1001),
           ClosedJob(8, 1001, Today())});
    Post("Jones, Bob", 1001);
    EXPECT_EQ(UsedTotals(1001), (std::vector<std::string>{"BodyWorked"}));
}

TEST_F(WriteLaborTest, TwoJobsOfOneCategoryAddUpAndGiveTwoLines)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001),
           ClosedJob(8, 1001, Today()).With(LDHistory::Hrs, 1.5),
           ClosedJob(8, 1001, Today()).With(LDHistory::Hrs, 0.25)});
    Select("Jones, Bob");
    shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
    for (shop.state.history.MoveFirst(); !shop.state.history.Eof(); shop.state.history.MoveNext())
        lodrin::WriteLabor(shop);
    EXPECT_EQ(LaborLines().size(), 2U);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 1.75);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyCost], base::Currency{350000});
}

TEST_F(WriteLaborTest, EachCodePostsToItsOwnPairAndAnyOtherToOther)
{
    const std::vector<std::pair<base::Value, std::string>> pairs{
        {"BL", "Body"},   {"RL", "Refinish"},     {"FL", "Frame"}, {"ML", "Mech"},
        {"SL", "Struct"}, {"GL", "Glass"},        {"DL", "Other"}, {"bl", "Other"},
        {"", "Other"},    {base::Null{}, "Other"}};
    std::int32_t number = 1001;
    for (const auto& pair : pairs) {
        const std::int32_t id = number;
        Given({Employee("Worker " + std::to_string(id), id), RepairOrder(number),
               ClosedJob(id, number, Today()).With(LDHistory::GLType, pair.first)});
        ++number;
    }
    Open();
    number = 1001;
    for (const auto& pair : pairs) {
        Post("Worker " + std::to_string(number), number);
        EXPECT_EQ(UsedTotals(number),
                  (std::vector<std::string>{pair.second + "Worked", pair.second + "Cost"}));
        ++number;
    }
    EXPECT_TRUE(Reports().empty());
}

TEST_F(WriteLaborTest, TotalsGoToWhateverOrderIsCurrent)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), RepairOrder(1002),
           ClosedJob(8, 1001, Today())});
    Post("Jones, Bob", 1002);
    EXPECT_TRUE(UsedTotals(1001).empty());
    EXPECT_EQ(Order(1002)[WorkOrder::BodyWorked], 1.0);
    EXPECT_EQ(LaborLines().at(0)[Labor::WorkOrder], 1001);
}

TEST_F(WriteLaborTest, WhatAnotherAddedToTheOrderMeanwhileIsBuiltUpon)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), ClosedJob(8, 1001, Today())});
    Select("Jones, Bob");
    shop.state.history.MoveLast();
    shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
    Changes("WorkOrder", "WorkOrderNumber = 1001", WorkOrder::BodyWorked, 2.5);
    lodrin::WriteLabor(shop);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 3.5);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyCost], base::Currency{200000});
    EXPECT_TRUE(Reports().empty());
}

// Another station adds an hour to the order each time this one is about to lock it, so often.
class OrderOfManyTest : public testing::Test {
protected:
    OrderOfManyTest()
    {
        world.MakeDatabase();
        world.Given({Employee("Jones, Bob", 8), RepairOrder(1001),
                     ClosedJob(8, 1001, base::DatePartOf(world.fakes.clock.Now()))});
        world.Select("Jones, Bob");
        world.shop.state.history.MoveLast();
        world.shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
    }

    void PostWhileAnotherAdds(int hours)
    {
        ShopWorld another(memory);
        another.pause = [](auto) {};
        disk.beforeCall = [&] {
            if (disk.call.starts_with("Flush")) ++flushes;
            const bool orderIsNext = flushes == kFlushesOfAStore;  // the labor line is stored
            if (orderIsNext && disk.call.starts_with("TryLock") && added < hours)
                AddAnHour(another);
        };
        lodrin::WriteLabor(world.shop);
        disk.beforeCall = nullptr;
    }
    // While this station has the order locked, the other one does not get it.
    void AddAnHour(ShopWorld& another)
    {
        const base::Value before = another.Order(1001)[WorkOrder::BodyWorked];
        const int error = ErrorOf([&] {
            another.Changes("WorkOrder", "WorkOrderNumber = 1001", WorkOrder::BodyWorked,
                            base::Plus(before, base::Value(1.0)));
        });
        EXPECT_TRUE(error == 0 || error == 3218) << error;
        added += error == 0 ? 1 : 0;
    }
    [[nodiscard]] base::Value Hours() { return world.Order(1001)[WorkOrder::BodyWorked]; }

    jet::io::MemoryFileSystem memory;
    WatchedFileSystem disk{memory};
    ShopWorld world{disk};
    int added = 0, flushes = 0;

private:
    static constexpr int kFlushesOfAStore = 4;
};

TEST_F(OrderOfManyTest, WhatOneAddsInTheSameInstantIsBuiltUpon)
{
    PostWhileAnotherAdds(5);
    EXPECT_EQ(added, 5);
    EXPECT_EQ(Hours(), 6.0);
    EXPECT_EQ(world.Reports(), std::vector<std::string>{});
    EXPECT_SPOTLESS(memory, world.DatabasePath());
}

TEST_F(OrderOfManyTest, WhoNeverComesToHisTurnReportsIt)
{
    PostWhileAnotherAdds(1000);
    EXPECT_EQ(world.LaborLines().size(), 1U);
    EXPECT_EQ(Hours(), double(added)) << "nothing of theirs is lost";
    ASSERT_FALSE(world.Reports().empty());
    EXPECT_EQ(world.Reports()[0], "3197 Sub frmLodrin!WriteLabor()");
    EXPECT_SPOTLESS(memory, world.DatabasePath());
}

TEST_F(WriteLaborTest, OrderThatAnotherDeletedMeanwhileIsReported)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), ClosedJob(8, 1001, Today())});
    Select("Jones, Bob");
    shop.state.history.MoveLast();
    shop.state.workOrders.FindFirst("WorkOrderNumber = 1001");
    Loses("WorkOrder", "WorkOrderNumber = 1001");
    lodrin::WriteLabor(shop);
    EXPECT_EQ(LaborLines().size(), 1U);
    ASSERT_FALSE(Reports().empty());
    EXPECT_EQ(Reports()[0], "3167 Sub frmLodrin!WriteLabor()");
}

TEST_F(WriteLaborTest, WithoutWorkOrderSetTheLineIsStoredAndEachStepReported)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001), ClosedJob(8, 1001, Today())});
    Select("Jones, Bob");
    shop.state.workOrders = dao::Recordset();
    lodrin::WriteLabor(shop);
    EXPECT_EQ(LaborLines().size(), 1U);
    EXPECT_TRUE(UsedTotals(1001).empty());
    EXPECT_EQ(Reports(), std::vector<std::string>(4, "91 Sub frmLodrin!WriteLabor()"));
}

TEST_F(WriteLaborTest, FailingReadOfTheProfileNeverPostsUnderAnotherName)
{
    Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001),
           ClosedJob(8, 1001, Today())});
    Post("Jones, Bob", 1001);
    ASSERT_EQ(LaborLines().size(), 1U);
    // Ann has no job today: there is no history row to read her number from.
    Select("Smith, Ann");
    lodrin::WriteLabor(shop);
    EXPECT_EQ(LaborLines().size(), 1U);
    EXPECT_EQ(Order(1001)[WorkOrder::BodyWorked], 1.0);
    EXPECT_FALSE(Reports().empty());
}

}  // namespace
