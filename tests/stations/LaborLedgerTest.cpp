// SPDX-License-Identifier: Apache-2.0
// Tests of LaborLedger.h: what a station may say in a day that counts as a good one.
#include "tests/stations/LaborLedger.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace tests {
namespace {

TEST(LaborLedgerTest, ConflictsWithOthersAreTold)
{
    LaborLedger ledger;
    EXPECT_FALSE(ledger.Take("ready 3 0"));
    EXPECT_FALSE(ledger.Take("to 3 1001"));
    EXPECT_TRUE(ledger.Take("done 3 1 told Could not update; currently locked by user 'Admin' on "
                            "machine 'BAY-2'.'3/16/2004:9:00:00 AM told Could not update; "
                            "currently locked.'3/16/2004:9:00:00 AM"));
    EXPECT_TRUE(ledger.Take("done 3 1 told Table 'Labor' is exclusively locked by user 'Admin' on "
                            "machine 'BAY-2'.'3/16/2004:9:01:00 AM"));
    EXPECT_TRUE(ledger.Take("done 3 2 told 3197 Sub frmLodrin!WriteLabor()"));
    EXPECT_TRUE(ledger.Take("done 3 2"));
    EXPECT_EQ(ledger.Told(), 3);
}

TEST(LaborLedgerTest, AnyOtherFailureFailsTheTest)
{
    LaborLedger ledger;
    EXPECT_NONFATAL_FAILURE(ledger.Take("done 3 1 told 3343 Sub frmLodrin!WriteLabor()"), "3343");
    EXPECT_NONFATAL_FAILURE(ledger.Take("ready 3 1 told 3021 Sub frmLodrin!GetROList()"), "3021");
    EXPECT_NONFATAL_FAILURE(ledger.Take("done 3 1 told The Repair Order was not found"),
                            "not found");
    // A lock, and behind it something else.
    EXPECT_NONFATAL_FAILURE(ledger.Take("done 3 1 told Could not update; currently locked.'9:00 AM "
                                        "told 3167 Sub frmLodrin!WriteLabor()"),
                            "3167");
}

}  // namespace
}  // namespace tests
