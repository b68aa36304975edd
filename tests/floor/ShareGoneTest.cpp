// SPDX-License-Identifier: Apache-2.0
// ShareGoneTest: the server on which the file lies goes away at any call of a job change, a break
// or an end of day, and comes back later. Of the calls one in 7 is the last, another one for each
// way to come back; with LODRIN_EVERY_CUT=1 in the environment each is.
#include "base/NumberedError.h"
#include "data/Tables.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/WatchedFileSystem.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;

constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";
constexpr std::size_t kEach = 7;

// What becomes of the files that were open.
enum class Handles { Dead, Alive };

// A share of another machine: while that is away, every call ends at once with 3043.
class Share {
public:
    Share()
    {
        share.beforeCall = [this] {
            if (left_ == calls++) GoAway();
            if (away && handles_ == Handles::Alive) throw base::NumberedError(3043);
        };
    }

    // After so many more calls. Requires: it is there.
    void GoAwayAfter(std::size_t more, Handles handles)
    {
        handles_ = handles;
        left_ = calls + more;
    }
    void ComeBack()
    {
        left_ = std::string::npos;
        if (away && handles_ == Handles::Dead) server_.Reboot();
        away = false;
    }

    jet::io::MemoryFileSystem memory;
    std::size_t calls = 0;
    bool away = false;

private:
    void GoAway()
    {
        away = true;
        if (handles_ != Handles::Dead) return;
        server_.PullThePlugAfter(0);
        try {
            server_.Remove("C:/Shop/nothing");  // the call that finds it out
        } catch (const base::NumberedError&) {
            return;
        }
    }

    FaultFileSystem server_{memory};
    std::size_t left_ = std::string::npos;  // calls
    Handles handles_ = Handles::Dead;

public:
    WatchedFileSystem share{server_};
};

// A shop in which Bob has worked on 1001 since eight.
std::vector<std::byte> ShopAtNine()
{
    jet::io::MemoryFileSystem disk;
    {
        ShopWorld world(disk);
        world.MakeDatabase();
        world.Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), RepairOrder(1001),
                     RepairOrder(1002)});
        world.At("08:00 AM").Select("Jones, Bob").Picks("BL", "Body").Starts(1001);
    }
    return disk.Content(kDatabase);
}

struct Act {
    const char* name;
    void (*run)(ShopWorld& world);
};

void ChangeJob(ShopWorld& world)
{
    world.dialogs.ConfirmOrLeave();
    world.Starts(1002);
}

const std::vector<Act>& Acts()
{
    static const std::vector<Act> acts{
        {"JobChange", ChangeJob},
        {"Break", [](ShopWorld& world) { world.ConfirmsProgress().GoesOnBreak(); }},
        {"EndOfDay", [](ShopWorld& world) { world.ConfirmsProgress().EndsDay(); }}};
    return acts;
}

// What a program told its user, or its log, that failed.
std::size_t Told(const ShopWorld& world)
{
    const std::vector<platform::Box>& boxes = world.fakes.prompts.boxes;
    const auto isNoQuestion = [](const platform::Box& box) {
        return box.buttons == platform::Buttons::Ok;
    };
    return world.Reports().size() +
           static_cast<std::size_t>(std::count_if(boxes.begin(), boxes.end(), isNoQuestion));
}

class ShareGoneTest : public testing::TestWithParam<std::tuple<Act, Handles>> {
protected:
    ShareGoneTest()
    {
        Share share;
        Put(share);
        ShopWorld world(share.share);
        world.At("09:00 AM").Select("Jones, Bob");
        world.fakes.prompts.TakeAnyBox();
        before_ = world.Stored();
        const std::size_t before = share.calls;
        act_.run(world);
        calls_ = share.calls - before;
        done_ = world.Stored();
    }

    void LoseItAt(std::size_t call)
    {
        SCOPED_TRACE("call " + std::to_string(call));
        Share share;
        Put(share);
        const bool wasTold = ActAndLoseIt(share, call);
        share.ComeBack();
        {
            // Whoever opens it undoes what was half done.
            ShopWorld next(share.share);
            if (handles_ == Handles::Dead) ExpectAllOrNothing(next, wasTold);
            ExpectWorks(next);
        }
        EXPECT_SPOTLESS(share.memory, kDatabase);
        for (const char* left : {".journal", ".journal.set-aside"})
            EXPECT_FALSE(share.memory.Exists(kDatabase + std::string(left))) << left;
    }

    // Whether the program told of a failure.
    bool ActAndLoseIt(Share& share, std::size_t call)
    {
        ShopWorld world(share.share);
        world.At("09:00 AM").Select("Jones, Bob");
        world.fakes.prompts.TakeAnyBox();
        share.GoAwayAfter(call, handles_);
        ExpectEndsAtOnce(world, share, act_.run);
        EXPECT_TRUE(share.away);
        const bool wasTold = Told(world) > 0;
        ExpectToldOfTheNext(world, share);
        if (handles_ == Handles::Dead) return wasTold;
        share.ComeBack();
        ExpectAllOrNothing(world, wasTold);
        ExpectWorks(world);
        return wasTold;
    }

    // What is begun while it is away.
    void ExpectToldOfTheNext(ShopWorld& world, const Share& share)
    {
        const std::size_t told = Told(world);
        ExpectEndsAtOnce(world, share, ChangeJob);
        EXPECT_GT(Told(world), told);
    }

    // The PIN check keeps silent, and then nothing is done at all.
    void ExpectAllOrNothing(ShopWorld& world, bool wasTold) const
    {
        const Contents stored = world.Stored();
        EXPECT_TRUE(wasTold || stored == done_ || stored == before_) << "half done, not told";
    }

    // Nobody waits for what does not answer, and little is asked of it.
    void ExpectEndsAtOnce(ShopWorld& world, const Share& share, void (*act)(ShopWorld& world))
    {
        int pauses = 0;
        const std::size_t before = share.calls;
        world.pause = [&](auto) { ++pauses; };
        act(world);
        world.pause = nullptr;
        EXPECT_EQ(pauses, 0);
        EXPECT_LE(share.calls - before, calls_ + kCallsInVain);
        most_ = std::max(most_, share.calls - before);
        const std::vector<std::string> reports = world.Reports();
        if (reports.empty()) return;
        EXPECT_TRUE(reports[0].starts_with("3043 ")) << reports[0];
        ++reported_;
    }

    static void ExpectWorks(ShopWorld& world)
    {
        const std::size_t told = Told(world);
        world.At("10:00 AM").Select("Smith, Ann").Picks("BL", "Paint").Starts(1002);
        EXPECT_EQ(Told(world), told) << testing::PrintToString(world.Reports());
        EXPECT_EQ(world.EmployeeRecord("Smith, Ann")[LDEmp::WONumber.name], 1002);
    }

    void Put(Share& share) const { share.memory.Create(kDatabase)->Write(0, content_); }

    static constexpr std::size_t kCallsInVain = 100;

    const Act act_ = std::get<0>(GetParam());
    const Handles handles_ = std::get<1>(GetParam());
    const std::vector<std::byte> content_ = ShopAtNine();
    std::size_t calls_ = 0;  // that the act makes
    Contents before_, done_;
    std::size_t most_ = 0;  // that one of them made while the share was going or away
    int reported_ = 0;      // acts after which the log had something
};

INSTANTIATE_TEST_SUITE_P(Acts, ShareGoneTest,
                         testing::Combine(testing::ValuesIn(Acts()),
                                          testing::Values(Handles::Dead, Handles::Alive)),
                         [](const auto& each) {
                             return std::string(std::get<0>(each.param).name) +
                                    (std::get<1>(each.param) == Handles::Dead ? "Dead" : "Alive");
                         });

TEST_P(ShareGoneTest, WhatIsBegunEndsAtOnceAndIsToldAndTheFileIsSoundAfterwards)
{
    const bool all = std::getenv("LODRIN_EVERY_CUT") != nullptr;
    const std::size_t first = all ? 0 : 3 * static_cast<std::size_t>(handles_);
    for (std::size_t call = first; call < calls_ && !HasFailure(); call += all ? 1 : kEach)
        LoseItAt(call);
    EXPECT_GT(reported_, 0);
    std::cout << act_.name << ": calls " << calls_ << ", at most " << most_
              << " when it was away\n";
}

}  // namespace
