// SPDX-License-Identifier: Apache-2.0
// KilledActsTest: a program of its own that is killed (SIGKILL) before the n-th write, flush or the
// like of each kind of work, on a real disk. One in 83 is killed; with LODRIN_EVERY_CUT=1 in the
// environment each, and the independent reader looks at the file after each.
#include "jet/io/StdFile.h"
#include "tests/stations/Station.h"
#include "tests/support/ExpectExport.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"
#include "tests/support/StoredStates.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <tuple>

namespace {

using namespace tests;

constexpr std::size_t kEach = 83;
constexpr std::size_t kExportsEach = 3;

bool AllAreWanted()
{
    return std::getenv("LODRIN_EVERY_CUT") != nullptr;
}

class KilledActsTest : public testing::TestWithParam<std::tuple<ShopAct, FileKind>> {
protected:
    // Puts the shop's file back as it was before the act, does the act in a program of its own and
    // kills it. False when it came to its end.
    bool KillAt(std::size_t operation)
    {
        std::ofstream out(file_, std::ios::binary | std::ios::trunc);
        const std::vector<std::byte>& made = history_.Made();
        for (const std::byte each : made)
            out.put(static_cast<char>(each));
        out.close();
        Process station =
            Station({"act", folder_.Path().string(), act_.name, std::to_string(operation)});
        const std::string line = station.Line();
        EXPECT_EQ(line, "");
        const int status = station.Wait();
        EXPECT_TRUE(status == 0 || status == -1) << status;
        return status != 0;
    }

    void ExpectOldOrNew(std::size_t operation)
    {
        SCOPED_TRACE("operation " + std::to_string(operation));
        ASSERT_TRUE(KillAt(operation)) << "it came to its end";
        ++kills_;
        WholeDatabase found;
        {
            ShopWorld next(folder_.Path());
            found = WholeIn(next);
        }
        EXPECT_EQ(history_.Objection(found, operation, false), "");
        jet::io::StdFileSystem files;
        EXPECT_SPOTLESS(files, file_.string());
        for (const char* left : {".journal", ".journal.set-aside"})
            EXPECT_FALSE(std::filesystem::exists(file_.string() + left)) << left;
        EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "Kelvaro.ldb"));
        if (!MdbExportIsInstalled() || (!AllAreWanted() && kills_ % kExportsEach != 1)) return;
        ++exports_;
        ExpectReadsTheSame(file_, found.rows);
    }

    const ShopAct act_ = std::get<0>(GetParam());
    const FileKind kind_ = std::get<1>(GetParam());
    const ActHistory history_{act_, kind_};
    ScratchFolder folder_;
    const std::filesystem::path file_ = folder_.Path() / "Kelvaro.mdb";
    std::size_t kills_ = 0, exports_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Acts, KilledActsTest,
                         testing::Combine(testing::ValuesIn(ShopActs()),
                                          testing::Values(FileKind::Jet4, FileKind::Jet3,
                                                          FileKind::EncodedJet4)),
                         [](const auto& each) {
                             return std::get<0>(each.param).name + NameOf(std::get<1>(each.param));
                         });

TEST_P(KilledActsTest, SampledOrAllLeaveEachRowOldOrNewAndASoundFile)
{
    const std::size_t step = AllAreWanted() ? 1 : kEach;
    for (std::size_t at = AllAreWanted() ? 0 : (17 + 11 * static_cast<std::size_t>(kind_)) % 30;
         at < history_.Operations() && !HasFailure(); at += step)
        ExpectOldOrNew(at);
    EXPECT_FALSE(KillAt(history_.Operations())) << "more operations than were counted";
    std::cout << act_.name << " " << NameOf(kind_) << ": operations " << history_.Operations()
              << ", kills " << kills_ << ", read by another reader " << exports_ << "\n";
    if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed: read by nobody else";
}

}  // namespace
