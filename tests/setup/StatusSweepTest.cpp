// SPDX-License-Identifier: Apache-2.0
// StatusSweepTest: the status description window, opened and used, while the n-th change to the
// disk fails, for every n: what the user is told, and what the next opening finds.
#include "app/Dispatch.h"
#include "data/Tables.h"
#include "jet/io/MemoryFile.h"
#include "platform/fake/OtherServices.h"
#include "setup/mnuSetup.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::Status;

constexpr int kDiskFailure = 3043;
constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";

// A shop with one wording and two labor accounts that have none yet.
std::vector<std::byte> NewShop()
{
    jet::io::MemoryFileSystem disk;
    {
        ShopWorld world(disk);
        world.MakeDatabase();
        world.GivenNo("Status").Given(
            {LaborType("BL", "Body"), LedgerAccount("BL", "Body Labor", true),
             LedgerAccount("FL", "Frame Labor", true), LedgerAccount("RL", "Refinish", true)});
    }
    return disk.Content(kDatabase);
}

// A user who takes every box he sees.
class PatientUser : public platform::ScriptedPrompts {
public:
    platform::Answer Show(const platform::Box& box) override
    {
        boxes.push_back(box);
        return platform::Answer::Ok;
    }
};

struct Scene {
    explicit Scene(const std::vector<std::byte>& content)
    {
        (void)memory.Create(kDatabase);
        memory.Content(kDatabase) = content;
        shop.values.DataPath = world.shop.values.DataPath;
        // As the main window's, open all the time.
        shop.state.database = world.engine.DefaultWorkspace().OpenDatabase(kDatabase);
        world.dialogs.whileStatusIsOpen = [this](lodrin::Shop& on) {
            lodrin::DispatchInDialog(on, [this](lodrin::Shop& used) {
                shown = used.forms.status->grdStatus.RowCount();
                if (shown > 0) stored = used.forms.status->StoreDescription(used, 1, "Metal");
            });
        };
    }
    void Play()
    {
        lodrin::Dispatch(shop, [](lodrin::Shop& on) { lodrin::mnuSetupItems_Click(on, 0); });
    }

    jet::io::MemoryFileSystem memory;
    FaultFileSystem disk{memory};
    ShopWorld world{disk};
    PatientUser user;
    platform::Services services = platform::With(world.fakes.AsServices(), user);
    lodrin::Shop shop{world.dialogs, services, world.engine};
    int shown = 0;
    bool stored = false;
};

class StatusSweepTest : public ::testing::Test {
protected:
    static std::set<std::string> WordingsIn(Scene& scene)
    {
        ShopWorld reader(scene.memory);
        std::set<std::string> wordings;
        for (const Record& row : reader.Rows("SELECT * FROM Status"))
            wordings.insert(row.Text(Status::GLType) + " " + row.Text(Status::Description));
        return wordings;
    }
};

TEST_F(StatusSweepTest, WithoutFailureAllIsStoredAndNothingReported)
{
    Scene scene(NewShop());
    scene.Play();
    EXPECT_EQ(WordingsIn(scene), (std::set<std::string>{"BL Metal", "FL Frame", "RL Refinish"}));
    EXPECT_TRUE(scene.world.Reports().empty());
    EXPECT_TRUE(scene.user.boxes.empty());
}

TEST_F(StatusSweepTest, EachFailureIsLoggedOnceAndTheRestRuns)
{
    const std::vector<std::byte> content = NewShop();
    bool failed = true;
    std::size_t failing = 0;
    std::size_t told = 0;
    for (; failed; ++failing) {
        SCOPED_TRACE("operation " + std::to_string(failing));
        Scene scene(content);
        const std::size_t start = scene.disk.Operations();
        scene.disk.FailOnce(failing, kDiskFailure);
        ASSERT_NO_THROW(scene.Play());
        failed = scene.disk.Operations() > start + failing;
        if (!failed) break;

        // It goes into the log; a typed wording that is refused is told in a box besides.
        told += scene.user.boxes.size();
        std::size_t reported = 0;
        for (const std::string& report : scene.world.Reports())
            if (report.rfind("3043 Sub frmStatus!", 0) == 0) ++reported;
        // What costs nothing may stay unsaid: a lock file that is not taken away, a journal that is
        // not ended.
        EXPECT_LE(reported, 1U);
        if (reported == 0) {
            EXPECT_EQ(WordingsIn(scene).size(), 3U);
        }
        EXPECT_EQ(scene.stored, scene.user.boxes.empty() && scene.shown > 0);

        // One failure costs one of the three rows, or the sight of them all; the next opening mends
        // it.
        const std::set<std::string> wordings = WordingsIn(scene);
        const std::string first = scene.stored ? "BL Metal" : "BL Body";
        EXPECT_EQ(wordings.count(first), 1U);
        EXPECT_GE(wordings.size(), scene.shown == 0 ? 1U : scene.stored ? 2U : 3U);
        EXPECT_SPOTLESS(scene.memory, kDatabase);
        scene.Play();
        EXPECT_EQ(WordingsIn(scene),
                  (std::set<std::string>{"BL Metal", "FL Frame", "RL Refinish"}));
        EXPECT_SPOTLESS(scene.memory, kDatabase);
    }
    EXPECT_GT(failing, 10U);
    EXPECT_GT(told, 0U);
}

}  // namespace
