// SPDX-License-Identifier: Apache-2.0
// EngineSweepTest: each procedure, while the engine's n-th call to the disk fails, for every n.
#include "app/Dispatch.h"
#include "tests/app/SilentCalls.h"
#include "tests/app/SweptProcedures.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace tests;

// Of so many files one is looked through; of so many calls one fails while there is no log.
constexpr std::size_t kChecked = 5, kWithoutLog = 5;

class EngineSweepTest : public ::testing::TestWithParam<Procedure> {
protected:
    static std::vector<std::byte> Content()
    {
        jet::io::MemoryFileSystem disk;
        ShopWorld world(disk);
        if (GetParam().given) {
            world.MakeDatabase();
            GetParam().given(world);
        } else {
            world.MakeManagementDatabase();
        }
        return disk.Content(kDatabase);
    }

    static void Prepare(Scene& scene)
    {
        if (GetParam().before) GetParam().before(scene.world);
    }

    // The procedure when nothing fails: what the file holds before and afterwards, and who would
    // keep silent about the failure of each call.
    struct Undisturbed {
        Contents before, after;
        std::vector<Silence> calls;
    };
    static Undisturbed RunUndisturbed(const std::vector<std::byte>& content)
    {
        Undisturbed undisturbed;
        Scene unchanged(content);
        Prepare(unchanged);
        undisturbed.before = ShopWorld(unchanged.memory).Stored();
        Scene scene(content);
        Prepare(scene);
        undisturbed.calls = CallsIn(scene);
        undisturbed.after = ShopWorld(scene.memory).Stored();
        return undisturbed;
    }

    // Runs the procedure. What it calls until the PIN is asked for belongs to the check.
    static std::vector<Silence> CallsIn(Scene& scene)
    {
        const auto& inputs = scene.world.fakes.prompts.inputs;
        const bool& progress = scene.world.dialogs.progressVisible;
        std::vector<DiskCall> calls;
        std::size_t untilPIN = 0;
        scene.disk.beforeCall = [&] {
            calls.push_back({scene.disk.call, progress ? Silence::Progress : Silence::None});
            if (inputs.empty()) untilPIN = calls.size();
        };
        GetParam().run(scene.world);
        scene.disk.beforeCall = nullptr;
        for (std::size_t i = 0; i < untilPIN && !inputs.empty(); ++i)
            calls[i].part = Silence::PINCheck;
        return SilencesOf(calls);
    }

    static Silent CountOf(const std::vector<Silence>& calls)
    {
        const auto count = [&](Silence silence) {
            return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), silence));
        };
        return {.asksPIN = count(Silence::PINCheck) > 0,
                .showsProgress = count(Silence::Progress) > 0,
                .tidyings = count(Silence::Tidying),
                .closings = count(Silence::Closing)};
    }

    // Plays the procedure with that call failing.
    static void Play(const std::vector<std::byte>& content, std::size_t call,
                     const Undisturbed& undisturbed)
    {
        Scene scene(content);
        Prepare(scene);
        scene.FailAt(call);
        EXPECT_NO_THROW(GetParam().run(scene.world));
        EXPECT_GT(scene.calls, call);
        const Silence silence = undisturbed.calls[call];
        EXPECT_EQ(Failures(scene.world.Reports()), silence == Silence::None ? 1U : 0U);
        if (silence == Silence::Tidying || silence == Silence::Closing) {
            EXPECT_EQ(ShopWorld(scene.memory).Stored(), undisturbed.after);
        }
        if (silence == Silence::PINCheck) {
            EXPECT_EQ(ShopWorld(scene.memory).Stored(), undisturbed.before);
        }
        GetParam().holds(scene);
        scene.disk.beforeCall = nullptr;
        if (call % kChecked == 0) {
            EXPECT_SPOTLESS(scene.memory, kDatabase);
        }
    }

    // How often the failing call was reported. Whatever is reported stands under a name that
    // belongs to the procedure.
    static std::size_t Failures(const std::vector<std::string>& reports)
    {
        std::size_t failures = 0;
        for (const std::string& report : reports) {
            const std::string location = report.substr(report.find(' ') + 1);
            EXPECT_EQ(GetParam().locations.count(location), 1U) << report;
            if (report.rfind("3043 ", 0) == 0) ++failures;
        }
        return failures;
    }

    // Runs the procedure as an event; true when the program ended in it.
    static bool EndsIn(Scene& scene)
    {
        try {
            lodrin::DispatchAlways(scene.world.shop,
                                   [&](lodrin::Shop&) { GetParam().run(scene.world); });
        } catch (const platform::ProgramEnded& end) {
            EXPECT_EQ(end.exitCode, 1);
            return true;
        }
        return false;
    }
};

INSTANTIATE_TEST_SUITE_P(Procedures, EngineSweepTest, ::testing::ValuesIn(SweptProcedures()),
                         [](const auto& each) { return each.param.name; });

TEST_P(EngineSweepTest, WhicheverCallFailsNothingEscapesAndAStatementThatReportsDoesSoOnce)
{
    const std::vector<std::byte> content = Content();
    const Undisturbed undisturbed = RunUndisturbed(content);
    EXPECT_EQ(CountOf(undisturbed.calls), GetParam().silent);
    EXPECT_FALSE(undisturbed.calls.empty());
    for (std::size_t call = 0; call < undisturbed.calls.size() && !HasFailure(); ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        Play(content, call, undisturbed);
    }
    RecordProperty("calls", static_cast<int>(undisturbed.calls.size()));
}

// The trap's own failure leaves every procedure: the platform tells of it, and the program is over.
TEST_P(EngineSweepTest, WithoutALogTheProgramEndsAndTheFileStaysSound)
{
    const std::vector<std::byte> content = Content();
    std::size_t ends = 0, call = 0;
    for (bool failed = true; failed && !HasFailure(); call += kWithoutLog) {
        SCOPED_TRACE("call " + std::to_string(call));
        Scene scene(content);
        Prepare(scene);
        scene.world.fakes.files.RefuseWrites("/Lodrin.Log", 75);
        scene.FailAt(call);
        const bool ended = EndsIn(scene);
        failed = scene.calls > call;
        scene.disk.beforeCall = nullptr;
        ends += ended ? 1 : 0;
        EXPECT_TRUE(scene.world.Reports().empty());
        EXPECT_SPOTLESS(scene.memory, kDatabase);
        if (ended) {
            EXPECT_EQ(scene.world.fakes.prompts.boxes.back(),
                      (platform::Box{.text = "Run-time error '75':\r\n\r\nPath/File access error",
                                     .title = "Lodrin",
                                     .icon = platform::Icon::Critical}));
        }
    }
    // The PIN check alone reports nothing, so it does not miss the log.
    EXPECT_EQ(ends > 0, !GetParam().locations.empty());
}

}  // namespace
