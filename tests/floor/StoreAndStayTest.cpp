// SPDX-License-Identifier: Apache-2.0
// StoreAndStayTest: what is known of the current record after a store, whatever fails.
#include "floor/StoreAndStay.h"

#include "app/ResumeNext.h"
#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/WatchedFileSystem.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

// A job is being added to the history, on a disk whose calls are counted.
struct AddedJob {
    AddedJob()
    {
        world.MakeDatabase();
        world.Given({ClosedJob(8, 1001, {38061})}).Open();
        history = world.shop.state.database.OpenRecordset("SELECT * FROM LDHistory");
        history.AddNew();
        history["EmpID"] = 9;
        disk.beforeCall = [this] {
            if (calls++ == failing) throw base::NumberedError(3043).At("planned failure");
        };
    }
    ~AddedJob() { disk.beforeCall = nullptr; }
    AddedJob(const AddedJob&) = delete;
    AddedJob& operator=(const AddedJob&) = delete;

    lodrin::Stored Store()
    {
        const lodrin::ResumeNext attempt(world.shop, "Sub frmLodrin!Test()");
        const lodrin::Stored stored = lodrin::StoreAndStay(attempt, history);
        disk.beforeCall = nullptr;
        return stored;
    }

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    jet::io::MemoryFileSystem memory;
    WatchedFileSystem disk{memory};
    ShopWorld world{disk};
    dao::Recordset history;
    std::size_t calls = 0, failing = kNone;
};

TEST(StoreAndStayTest, TheStoredRecordBecomesTheCurrentOne)
{
    AddedJob job;
    EXPECT_EQ(job.Store(), lodrin::Stored::AndCurrent);
    EXPECT_EQ(job.history["EmpID"].Value(), base::Value(9));
}

// Whoever posts the record at hand then would post another man's.
TEST(StoreAndStayTest, AStoredRecordThatCannotBeGoneToIsNotTheCurrentOne)
{
    AddedJob counted;
    counted.history.Update();
    AddedJob job;
    job.failing = counted.calls;  // the first call behind the store
    EXPECT_EQ(job.Store(), lodrin::Stored::NotCurrent);
    EXPECT_EQ(job.world.Jobs().size(), 2U);
    EXPECT_EQ(job.history["EmpID"].Value(), base::Value(8));
    EXPECT_EQ(job.world.Reports(), std::vector<std::string>{"3043 Sub frmLodrin!Test()"});
    EXPECT_SPOTLESS(job.memory, job.world.DatabasePath());
}

TEST(StoreAndStayTest, ARecordThatIsNotStoredIsSaidSo)
{
    AddedJob job;
    job.failing = 0;
    EXPECT_EQ(job.Store(), lodrin::Stored::No);
    EXPECT_EQ(job.world.Jobs().size(), 1U);
}

}  // namespace
