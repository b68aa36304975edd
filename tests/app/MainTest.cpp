// SPDX-License-Identifier: Apache-2.0
#include "app/frmSplash.h"
#include "app/modErrTrap.h"
#include "base/NumberedError.h"
#include "platform/fake/OtherServices.h"
#include "tests/support/ShellFixture.h"

namespace lodrin {
namespace {

constexpr const char* kDateQuestion = "Is this the correct date: Monday, January 15, 2024";

// The text of the box, joined as it is shown.
constexpr const char* kAlreadyRunning =
    "The Kelvaro Lodrin program is already running on this machine.\r\n Try the following actions "
    "as necessary: \r\n\r\n1. Check your task bar, if Lodrin is shown click on the button to "
    "activate it. 2. Try starting the Lodrin program again.  3. If actions 1 and 2 above do not "
    "work and this message appears again, press Control/Alt/Delete.  This will bring up the Task "
    "Manager.  If the Lodrin Software appears in the task list, highlight it and click on 'End "
    "Task'.  If a second box appears press 'End Task' there as well.  Then retry running Lodrin.";

// Nobody can tell whether another copy runs.
class UnknownInstance : public platform::Instance {
public:
    [[nodiscard]] bool AnotherRuns() override { throw base::NumberedError(51); }
};

class MainTest : public tests::ShellFixture {};

TEST_F(MainTest, ASecondStartIsRefusedWithoutTheDateQuestion)
{
    fakes.instance.anotherRuns = true;
    fakes.prompts.Expect(kAlreadyRunning);
    EXPECT_THROW(Main(shop), platform::ProgramEnded);
    EXPECT_EQ(fakes.prompts.boxes, (std::vector<platform::Box>{
                                       {.text = kAlreadyRunning, .title = "Duplicate Program"}}));
    EXPECT_EQ(dialogs.splashes, 0);
    EXPECT_EQ(Log(), "");
}

TEST_F(MainTest, NoToTheDateEndsTheProgramWithoutTheSplash)
{
    fakes.prompts.Expect(kDateQuestion, platform::Answer::No);
    EXPECT_THROW(Main(shop), platform::ProgramEnded);
    EXPECT_EQ(fakes.prompts.boxes,
              (std::vector<platform::Box>{{.text = kDateQuestion,
                                           .title = "Date Verification",
                                           .buttons = platform::Buttons::YesNo}}));
    EXPECT_EQ(dialogs.splashes, 0);
    EXPECT_EQ(dialogs.mains, 0);
}

TEST_F(MainTest, YesBringsUpTheSplashAndThenTheMainWindow)
{
    fakes.prompts.Expect(kDateQuestion, platform::Answer::Yes);
    dialogs.whenMainIsShown = [this](Shop& /*shop*/) {
        EXPECT_TRUE(dialogs.splashVisible);
        EXPECT_EQ(fakes.events.count, 1);
    };
    Main(shop);
    EXPECT_EQ(dialogs.splashes, 1);
    EXPECT_EQ(dialogs.mains, 1);
    EXPECT_EQ(fakes.events.count, 2);
}

TEST_F(MainTest, AFailingSplashDoesNotKeepTheShopFromWorking)
{
    fakes.prompts.Expect(kDateQuestion, platform::Answer::Yes);
    dialogs.whenMainIsShown = [](Shop& /*shop*/) { throw base::NumberedError(360); };
    Main(shop);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"360 Sub modErrTrap!General_Main()"}));
    EXPECT_EQ(fakes.events.count, 2);
}

TEST_F(MainTest, WhereAnotherCopyCannotBeFoundOutThisOneIsTheFirst)
{
    UnknownInstance unknown;
    platform::Services world = platform::With(fakes.AsServices(), unknown);
    Shop other(dialogs, world, engine);
    fakes.prompts.Expect(kDateQuestion, platform::Answer::Yes);
    Main(other);
    EXPECT_EQ(dialogs.mains, 1);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"51 Sub modErrTrap!General_Main()"}));
}

class frmSplashTest : public tests::ShellFixture {};

TEST_F(frmSplashTest, TheLabelShowsTheVersionAndTheManagementSystemsPath)
{
    fakes.files.Write("C:/Lodrin/Ostrel.ini", "[FileLoc]\r\nOstrel=C:\\Tarvex\\Data\r\n");
    shop.forms.splash.Form_Load(shop);
    EXPECT_EQ(shop.forms.splash.lblVersion.Caption(),
              "Version 1.0.5          Database Path - C:\\Tarvex\\Data");
}

TEST_F(frmSplashTest, WithoutTheSettingsThePathIsEmpty)
{
    shop.forms.splash.Form_Load(shop);
    EXPECT_EQ(shop.forms.splash.lblVersion.Caption(), "Version 1.0.5          Database Path - ");
    EXPECT_EQ(Log(), "");
}

TEST_F(frmSplashTest, APathThatCannotBeReadLeavesTheVersion)
{
    fakes.files.Write("C:/Lodrin/Ostrel.ini",
                      "[FileLoc]\r\nOstrel=" + std::string(20000, 'x') + "\r\n");
    shop.forms.splash.Form_Load(shop);
    EXPECT_EQ(shop.forms.splash.lblVersion.Caption(), "Version 1.0.5          Database Path - ");
    EXPECT_EQ(Reports(), (std::vector<std::string>{"6 Sub frmSplash!Form_Load()"}));
}

}  // namespace
}  // namespace lodrin
