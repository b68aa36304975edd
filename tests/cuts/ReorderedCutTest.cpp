// SPDX-License-Identifier: Apache-2.0
// ReorderedCutTest: a disk that stores what was not flushed in any order, or not at all, is stopped
// at some operation of some work. 200 times; LODRIN_POWER_CUTS in the environment says how often,
// and LODRIN_POWER_CUT_SEED with which seed to begin.
#include "base/NumberedError.h"
#include "tests/cuts/CutExpectations.h"
#include "tests/support/FaultFileSystem.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <random>

namespace {

using namespace tests;

std::uint32_t Wish(const char* name, std::uint32_t otherwise)
{
    const char* const wish = std::getenv(name);
    return wish == nullptr ? otherwise : static_cast<std::uint32_t>(std::stoul(wish));
}

// One machine that is stopped in the midst of an act, and perhaps again while the next start mends
// what the first cut left.
class StoppedMachine {
public:
    explicit StoppedMachine(std::uint32_t seed) : dice_(seed) {}

    void Run()
    {
        SCOPED_TRACE(std::string(act_.name) + ", " + NameOf(kind_) + ", operation " +
                     std::to_string(operation_) + " of " + std::to_string(history_.Operations()));
        PutDatabase(memory_, history_.Made());
        Cut(operation_, [this](ShopWorld& world) { act_.run(world); });
        if (dice_() % 4 == 0) Cut(dice_() % 24, [](ShopWorld& world) { (void)WholeIn(world); });
        ExpectOldOrNew(memory_, history_, operation_, true);
        if (dice_() % 5 != 0) return;
        ExpectWorkGoesOn(memory_, act_);
        EXPECT_SPOTLESS(memory_, kShopFile);
    }

private:
    template <class Work>
    void Cut(std::size_t operations, Work work)
    {
        FaultFileSystem disk(memory_);
        disk.PutUnflushedAtRisk(static_cast<std::uint32_t>(dice_()));
        disk.PullThePlugAfter(operations, LastWrite::Torn, Unflushed::Shuffled);
        try {
            ShopWorld world(disk);
            world.fakes.prompts.TakeAnyBox();
            work(world);
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), 3043);
        }
        disk.Reboot();
    }

    std::mt19937 dice_;
    const ShopAct& act_ = ShopActs().at(dice_() % ShopActs().size());
    const FileKind kind_ =
        std::array<FileKind, 3>{FileKind::Jet4, FileKind::Jet3, FileKind::EncodedJet4}.at(dice_() %
                                                                                          3);
    const ActHistory& history_ = HistoryOf(act_, kind_);
    const std::size_t operation_ = dice_() % history_.Operations();
    jet::io::MemoryFileSystem memory_;
};

TEST(ReorderedCutTest, LeavesEachRowOldOrNewAndASoundFile)
{
    const std::uint32_t first = Wish("LODRIN_POWER_CUT_SEED", 1);
    const std::uint32_t runs = Wish("LODRIN_POWER_CUTS", 200);
    for (std::uint32_t seed = first; seed < first + runs; ++seed) {
        SCOPED_TRACE("LODRIN_POWER_CUT_SEED=" + std::to_string(seed) + " LODRIN_POWER_CUTS=1");
        StoppedMachine(seed).Run();
        if (HasFailure()) return;
    }
    std::cout << "power cuts " << runs << " from seed " << first << "\n";
}

}  // namespace
