// SPDX-License-Identifier: Apache-2.0
// EveryCutTest: each kind of work, in each kind of file, stopped before every operation of its
// disk. Of the cuts one in 61 is made, another one for each kind of file and of cut; with
// LODRIN_EVERY_CUT=1 in the environment all are.
#include "app/Dispatch.h"
#include "base/NumberedError.h"
#include "setup/mnuSetup.h"
#include "tests/cuts/CutExpectations.h"
#include "tests/support/PowerCut.h"

#include <cstdlib>
#include <iostream>
#include <tuple>

namespace {

using namespace tests;

constexpr std::size_t kEach = 61;
constexpr std::size_t kLooksFurther = 7;

bool AllAreWanted()
{
    return std::getenv("LODRIN_EVERY_CUT") != nullptr;
}

class EveryCutTest : public ::testing::TestWithParam<std::tuple<ShopAct, FileKind>> {
protected:
    // False when the act needed no such operation.
    bool CutAt(std::size_t operation, const PowerCut& cut, jet::io::MemoryFileSystem& memory) const
    {
        PutDatabase(memory, history_.Made());
        FaultFileSystem disk(memory);
        disk.PullThePlugAfter(operation, cut.last, cut.unflushed);
        try {
            ShopWorld world(disk);
            world.fakes.prompts.TakeAnyBox();
            act_.run(world);
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), 3043);
        }
        const bool isOut = disk.PowerIsOut();
        disk.Reboot();
        return isOut;
    }

    void ExpectSurvives(std::size_t operation, const PowerCut& cut)
    {
        SCOPED_TRACE(NameOf(cut) + ", operation " + std::to_string(operation));
        jet::io::MemoryFileSystem files;
        ASSERT_TRUE(CutAt(operation, cut, files));
        ++cuts_;
        ExpectOldOrNew(files, history_, operation, cut.unflushed == Unflushed::Lost);
        if (cuts_ % kLooksFurther != 1) return;
        ExpectWorkGoesOn(files, act_);
        EXPECT_SPOTLESS(files, kShopFile);
    }

    const ShopAct act_ = std::get<0>(GetParam());
    const FileKind kind_ = std::get<1>(GetParam());
    const ActHistory& history_ = HistoryOf(act_, kind_);
    std::size_t cuts_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Cuts, EveryCutTest,
                         ::testing::Combine(::testing::ValuesIn(ShopActs()),
                                            ::testing::Values(FileKind::Jet4, FileKind::Jet3,
                                                              FileKind::EncodedJet4)),
                         [](const auto& each) {
                             return std::get<0>(each.param).name + NameOf(std::get<1>(each.param));
                         });

TEST_P(EveryCutTest, SampledOrAllLeaveEachRowOldOrNewAndASoundFile)
{
    ASSERT_GT(history_.States(), 1U);
    const std::size_t step = AllAreWanted() ? 1 : kEach;
    std::size_t first = 13 * static_cast<std::size_t>(kind_);
    for (const PowerCut& cut : kPowerCuts) {
        first += 23;
        for (std::size_t at = first % step; at < history_.Operations() && !HasFailure(); at += step)
            ExpectSurvives(at, cut);
    }
    jet::io::MemoryFileSystem files;
    EXPECT_FALSE(CutAt(history_.Operations(), kPowerCuts[0], files)) << "more than were counted";
    std::cout << act_.name << " " << NameOf(kind_) << ": stores " << history_.States() - 1
              << ", operations " << history_.Operations() << ", cuts " << cuts_ << "\n";
}

// Filling the list of repair orders anew is no store, so there is nothing to cut.
TEST(SynchroniseOrdersTest, TheDatabaseStaysAsItIs)
{
    const ShopAct act{"", ShopActOf("JobChange").make, [](ShopWorld& world) {
                          world.Open();
                          lodrin::Dispatch(world.shop, lodrin::mnuSynchRO_Click);
                          EXPECT_GT(world.shop.window.cboRO.ListCount(), 0);
                      }};
    const ActHistory history(act, FileKind::Jet4);
    EXPECT_EQ(history.States(), 1U);
    EXPECT_TRUE(history.FileStays());
}

}  // namespace
