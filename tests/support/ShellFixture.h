// SPDX-License-Identifier: Apache-2.0
// ShellFixture: tests of the program around the database, on a machine without one.
#pragma once

#include "base/Calendar.h"
#include "tests/support/ShopFixture.h"

#include <gtest/gtest.h>

namespace tests {

// The clock stands at 5:55:03 PM on January 15, 2024; no Kelvaro.mdb, no settings.
class ShellFixture : public ::testing::Test, protected MemoryDisk, protected ShopWorld {
protected:
    ShellFixture() : ShopWorld(disk)
    {
        fakes.clock.Set(base::DateFrom({2024, 1, 15, 17, 55, 3}));
        shop.values.DataPath.clear();
    }

    void TearDown() override { EXPECT_EQ(fakes.prompts.Pending(), std::vector<std::string>{}); }

    // The whole log.
    [[nodiscard]] std::string Log() const
    {
        return fakes.files.Exists("/Lodrin.Log") ? fakes.files.Read("/Lodrin.Log") : std::string();
    }
};

}  // namespace tests
