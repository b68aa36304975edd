// SPDX-License-Identifier: Apache-2.0
// Real files are clean: what the original engine wrote is the measure of the checker.
#include "jet/check/IntegrityChecker.h"
#include "jet/io/StdFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

#include <gtest/gtest.h>

namespace jet::check {

namespace {

class SampleIntegrityTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(
    Files, SampleIntegrityTest,
    testing::Values("mdb/bigIndexTestV2000.mdb", "mdb/compIndexTestV1997.mdb",
                    "mdb/compIndexTestV2000.mdb", "mdb/db-enc.mdb", "mdb/db97-enc.mdb",
                    "mdb/delColTestV1997.mdb", "mdb/delColTestV2000.mdb", "mdb/delTestV1997.mdb",
                    "mdb/delTestV2000.mdb", "mdb/fixedNumericTestV2000.mdb",
                    "mdb/fixedTextTestV2000.mdb", "mdb/indexCursorTestV2000.mdb",
                    "mdb/indexTestV1997.mdb", "mdb/indexTestV2000.mdb", "mdb/overflowTestV1997.mdb",
                    "mdb/overflowTestV2000.mdb", "mdb/queryTestV1997.mdb", "mdb/queryTestV2000.mdb",
                    "mdb/test2V1997.mdb", "mdb/test2V2000.mdb", "mdb/testIndexCodesV1997.mdb",
                    "mdb/testIndexPropertiesV2000.mdb", "mdb/testPromotionV2000.mdb",
                    "mdb/testV1997.mdb", "mdb/testV2000.mdb", "shop/Kelvaro.mdb",
                    "shop-fresh/Kelvaro.mdb"));

TEST_P(SampleIntegrityTest, IsClean)
{
    const std::filesystem::path sample = tests::SampleFolder() / GetParam();
    SKIP_WITHOUT_SAMPLE(sample);
    io::StdFileSystem files;
    EXPECT_CLEAN(files, sample.string());
    const CheckReport report = CheckIntegrity(files, sample.string());
    // It did look: every one of these files has system tables with rows and index entries.
    EXPECT_GE(report.tables, 5U);
    EXPECT_GE(report.rows, 60U);
    EXPECT_GE(report.indexEntries, report.tables);
}

}  // namespace

}  // namespace jet::check
