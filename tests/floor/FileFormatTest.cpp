// SPDX-License-Identifier: Apache-2.0
// FileFormatTest: one day's work in the same shop, kept in a file of Access 97, in one of Access
// 2000 and in an encoded one of Access 97.
#include "base/Calendar.h"
#include "jet/io/StdFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopWorld.h"
#include "tools/shop/SampleShop.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace {

using namespace tests;
using lodrin::LDHistory;
using lodrin::LDTotals;

// A shop of its own in a folder of the machine.
struct OneShop {
    explicit OneShop(const jet::format::FileVersion& format, bool encoded = false)
        : file(folder.Path() / "Kelvaro.mdb")
    {
        tools::shop::SampleShop wishes;
        wishes.history = 120;
        wishes.orders = 20;
        wishes.today = base::DateFrom({2004, 3, 15});
        wishes.format = &format;
        wishes.encoded = encoded;
        jet::io::StdFileSystem files;
        tools::shop::MakeSampleShop(files, file.string(), wishes, [](std::string_view, int) {});
        world = std::make_unique<ShopWorld>(folder.Path());
    }

    // Harvey comes late, changes his job, goes on a break, takes the first one up again and goes
    // home; Selma begins and goes on.
    void WorkADay() const
    {
        world->At("01:00 PM").Select("Whitcombe, Harvey").Types("9686").Picks("BL", "Body");
        world->Starts(10018);
        world->At("02:15 PM").Types("9686").Picks("RL", "Paint").Starts(10021);
        world->At("03:00 PM").Types("9686").SetsProgress("In body").GoesOnBreak();
        world->At("03:20 PM").Types("9686").Picks("BL", "Body").Starts(10018);
        world->At("03:30 PM").Select("Chisholm, Selma").Picks("ML", "Mechanical").Starts(10020);
        world->At("05:00 PM").Select("Whitcombe, Harvey").IsSure().Types("9686");
        world->ConfirmsProgress().EndsDay();
    }

    ScratchFolder folder;
    std::filesystem::path file;
    std::unique_ptr<ShopWorld> world;
};

class FileFormatTest : public ::testing::Test {
protected:
    FileFormatTest()
    {
        jet3.WorkADay();
        jet4.WorkADay();
        encoded3.WorkADay();
    }

    OneShop jet3{jet::format::kJet3}, jet4{jet::format::kJet4}, encoded3{jet::format::kJet3, true};
};

TEST_F(FileFormatTest, TheDayIsStoredInAll)
{
    for (const OneShop* shop : {&jet3, &jet4, &encoded3}) {
        ShopWorld& world = *shop->world;
        EXPECT_TRUE(world.Reports().empty());
        EXPECT_TRUE(world.fakes.prompts.Pending().empty());
        EXPECT_EQ(world.dialogs.Pending(), 0U);
        const auto jobs = world.Rows("SELECT * FROM LDHistory WHERE ID > 120 ORDER BY ID");
        ASSERT_EQ(jobs.size(), 3U);
        EXPECT_EQ(jobs[0][LDHistory::Hrs], 1.25);
        EXPECT_EQ(jobs[1][LDHistory::Hrs], 0.75);
        EXPECT_EQ(jobs[2][LDHistory::Hrs], 1.67);
        const auto totals = world.Rows("SELECT * FROM LDTotals WHERE EmpID = 15");
        ASSERT_FALSE(totals.empty());
        EXPECT_EQ(totals.back()[LDTotals::TotHrs], 4.0);
        EXPECT_EQ(world.LaborLines().size(), 123U);
    }
}

TEST_F(FileFormatTest, AllHoldTheSameRows)
{
    Contents found = jet3.world->Stored(), expected = jet4.world->Stored();
    EXPECT_TRUE(encoded3.world->Stored() == found);
    // A part's weight is a decimal, which Jet 3 lacks.
    EXPECT_EQ(found.at("Part").size(), expected.at("Part").size());
    found.erase("Part");
    expected.erase("Part");
    EXPECT_TRUE(found == expected);
    jet3.world.reset();
    jet4.world.reset();
    encoded3.world.reset();
    jet::io::StdFileSystem files;
    EXPECT_SPOTLESS(files, jet3.file.string());
    EXPECT_SPOTLESS(files, jet4.file.string());
    EXPECT_SPOTLESS(files, encoded3.file.string());
}

TEST_F(FileFormatTest, TheOtherReaderFindsTheSameRowsInAll)
{
    if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    std::vector<std::string> tables = MdbTables(jet4.file), same = MdbTables(jet3.file);
    std::sort(tables.begin(), tables.end());
    std::sort(same.begin(), same.end());
    EXPECT_EQ(same, tables);
    EXPECT_GE(tables.size(), 10U);
    for (const std::string& table : tables) {
        std::vector<ExportedRow> found = MdbExport(jet3.file, table);
        std::vector<ExportedRow> expected = MdbExport(jet4.file, table);
        for (auto* rows : {&found, &expected})
            for (ExportedRow& row : *rows)
                row.erase("Weight");
        EXPECT_TRUE(found == expected) << table;
        std::vector<ExportedRow> encoded = MdbExport(encoded3.file, table);
        for (ExportedRow& row : encoded)
            row.erase("Weight");
        EXPECT_TRUE(encoded == expected) << table;
    }
}

}  // namespace
