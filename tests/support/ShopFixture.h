// SPDX-License-Identifier: Apache-2.0
// ShopFixture: tests on a shop in memory, on the real engine.
#pragma once

#include "jet/io/MemoryFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"

#include <gtest/gtest.h>

namespace tests {

struct MemoryDisk {
    jet::io::MemoryFileSystem disk;
};

// Rule: a test fails that leaves an expected question or dialog unasked, or a database file in
//       which the integrity checker finds anything to remark. A test about a missing file takes
//       it away.
class ShopFixture : public ::testing::Test, protected MemoryDisk, protected ShopWorld {
protected:
    ShopFixture() : ShopWorld(disk) { MakeDatabase(); }

    void TearDown() override
    {
        EXPECT_EQ(fakes.prompts.Pending(), std::vector<std::string>{});
        EXPECT_EQ(dialogs.Pending(), 0U);
        if (disk.Exists(database_)) {
            EXPECT_SPOTLESS(disk, database_);
        }
    }

private:
    const std::string database_ = DatabasePath();
};

}  // namespace tests
