// SPDX-License-Identifier: Apache-2.0
// The opening of the database while the disk refuses one write, each of them in turn.
#include "base/Calendar.h"
#include "data/DBOpen.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/ShopWorld.h"

#include <gtest/gtest.h>

namespace lodrin {
namespace {

constexpr int kDiskFull = 3026;
constexpr double kFriday = 38058;

base::Date Clock(int hour, int minute)
{
    return base::DateFrom({1899, 12, 30, hour, minute, 0});
}

// A shop on a Monday in which a job was left open on Friday, and a new man has come.
std::vector<std::byte> ForgottenFriday()
{
    jet::io::MemoryFileSystem disk;
    tests::ShopWorld shop(disk);
    shop.MakeDatabase();
    shop.Given({tests::Employee("Smith, Ann", 7)
                    .With("StartDay", Clock(8, 0))
                    .With("WorkDate", base::Date{kFriday})
                    .With("StartJob", Clock(10, 20))
                    .With("WO#", 1001)
                    .With("GLType", "BL"),
                tests::Employee("Jones, Bob", 8).Without("LDEmp"),
                tests::ClosedJob(9, 900, {kFriday})});
    return disk.Content(shop.DatabasePath());
}

// One opening of that shop, in which the write after `writes` others is refused.
struct RefusedOpening {
    RefusedOpening(const std::vector<std::byte>& file, std::size_t writes)
    {
        (void)memory.Create(world.DatabasePath());
        memory.Content(world.DatabasePath()) = file;
        disk.FailOnce(writes, kDiskFull);
        const std::size_t before = disk.Operations();
        world.fakes.prompts.TakeAnyBox();
        DBOpen(world.shop);
        refused = disk.Operations() - before > writes;
    }

    jet::io::MemoryFileSystem memory;
    tests::FaultFileSystem disk{memory};
    tests::ShopWorld world{disk};
    bool refused = false;
};

std::string Describe(const std::vector<std::string>& reports)
{
    std::string text;
    for (const std::string& report : reports)
        text += report + "\n";
    return text;
}

TEST(OpeningSweepTest, WhicheverWriteIsRefusedOneOpeningLosesNoJobAndPostsNoneTwice)
{
    const std::vector<std::byte> file = ForgottenFriday();
    constexpr std::size_t kMoreThanAll = 2000;
    std::size_t writes = 0;
    for (; writes < kMoreThanAll; ++writes) {
        RefusedOpening opening(file, writes);
        tests::ShopWorld& world = opening.world;
        SCOPED_TRACE(std::to_string(writes) + "\n" + Describe(world.Reports()));
        // What became of the employees is told, also when the file did not even open.
        EXPECT_EQ(world.fakes.prompts.boxes.size(), 1U);
        // Ann's job stands on her row or in the history.
        const bool isOpen = world.EmployeeRecord("Smith, Ann")["StartJob"].IsDate();
        const std::size_t recorded = world.Rows("SELECT * FROM LDHistory WHERE EmpID = 7").size();
        EXPECT_TRUE(isOpen || recorded == 1);
        EXPECT_LE(recorded, 1U);
        EXPECT_LE(world.LaborLines().size(), recorded);
        EXPECT_EQ(world.Rows("SELECT * FROM LDHistory WHERE EmpID = 9").size(), 1U);
        EXPECT_EQ(world.Rows("Profile").size(), 2U);
        if (!opening.refused) break;
    }
    EXPECT_GT(writes, 10U);
    EXPECT_LT(writes, kMoreThanAll);
}

}  // namespace
}  // namespace lodrin
