// SPDX-License-Identifier: Apache-2.0
#include "app/Dispatch.h"

#include "base/NumberedError.h"
#include "platform/fake/OtherServices.h"
#include "tests/support/ShellFixture.h"

#include <functional>
#include <new>

namespace lodrin {
namespace {

// A user before whose eyes something happens while a box is open.
class BusyPrompts : public platform::ScriptedPrompts {
public:
    std::function<void()> whileOpen;

    platform::Answer Show(const platform::Box& box) override
    {
        boxes.push_back(box);
        if (whileOpen) whileOpen();
        return platform::Answer::Ok;
    }
    [[nodiscard]] std::string Input(const platform::InputPrompt& /*prompt*/) override
    {
        if (whileOpen) whileOpen();
        return "typed";
    }
    [[nodiscard]] std::string OpenFile(const std::string& /*filter*/) override
    {
        if (whileOpen) whileOpen();
        return "picked";
    }
};

class DispatchTest : public tests::ShellFixture {
protected:
    void Tick()
    {
        Dispatch(busyShop_, [this](Shop& /*shop*/) { ++ticks_; });
    }

    BusyPrompts prompts_;
    platform::Services services_ = platform::With(fakes.AsServices(), prompts_);
    Shop busyShop_{dialogs, services_, engine};
    int ticks_ = 0;
};

TEST_F(DispatchTest, AnEventRunsItsProcedure)
{
    Tick();
    EXPECT_EQ(ticks_, 1);
}

TEST_F(DispatchTest, ATickIsDroppedWhileABoxIsOpenAndNotMadeUpAfterwards)
{
    prompts_.whileOpen = [this] { Tick(); };
    Dispatch(busyShop_, [](Shop& on) { Say(on, "Read this"); });
    EXPECT_EQ(prompts_.boxes.size(), 1U);
    EXPECT_EQ(ticks_, 0);
    Tick();
    EXPECT_EQ(ticks_, 1);
}

TEST_F(DispatchTest, ATickIsDroppedWhileAPromptOrAFileDialogIsOpen)
{
    prompts_.whileOpen = [this] { Tick(); };
    EXPECT_EQ(AskInput(busyShop_, {.text = "PIN"}), "typed");
    EXPECT_EQ(AskFile(busyShop_, "ALL (*.*)|*.*"), "picked");
    EXPECT_EQ(ticks_, 0);
}

TEST_F(DispatchTest, ASecondClickIsDroppedWhileTheFirstOneRuns)
{
    int clicks = 0;
    const auto click = [&](Shop& on) {
        ++clicks;
        Dispatch(on, [&](Shop& /*again*/) { ++clicks; });
    };
    Dispatch(busyShop_, click);
    EXPECT_EQ(clicks, 1);
}

TEST_F(DispatchTest, ADialogTakesItsOwnEventsWhileItsProcedureWaits)
{
    int dialogEvents = 0;
    dialogs.Leave();
    dialogs.whileGLSelectIsOpen = [&](Shop& on) {
        Tick();
        DispatchInDialog(on, [&](Shop& /*dialog*/) { ++dialogEvents; });
    };
    Dispatch(busyShop_, [](Shop& on) { ShowGLSelect(on); });
    EXPECT_EQ(dialogEvents, 1);
    EXPECT_EQ(ticks_, 0);
}

TEST_F(DispatchTest, ABoxOverADialogHoldsTheDialogsEvents)
{
    int dialogEvents = 0;
    dialogs.Leave();
    dialogs.whileGLSelectIsOpen = [&](Shop& on) {
        const auto press = [&] { DispatchInDialog(on, [&](Shop& /*on*/) { ++dialogEvents; }); };
        prompts_.whileOpen = press;
        DispatchInDialog(on, [](Shop& dialog) { Say(dialog, "Over the dialog"); });
        EXPECT_EQ(dialogEvents, 0);
        press();
        EXPECT_EQ(dialogEvents, 1);
    };
    Dispatch(busyShop_, [](Shop& on) { ShowGLSelect(on); });
    EXPECT_EQ(dialogEvents, 1);
}

TEST_F(DispatchTest, ADialogEventWithoutADialogIsDropped)
{
    DispatchInDialog(busyShop_, [](Shop& /*shop*/) { FAIL() << "no dialog is open"; });
    SUCCEED();
}

TEST_F(DispatchTest, AnUnhandledErrorIsShownOnceAndEndsTheProgram)
{
    try {
        Dispatch(busyShop_, [](Shop& /*shop*/) { throw base::NumberedError(381); });
        FAIL() << "the program went on";
    } catch (const platform::ProgramEnded& ended) {
        EXPECT_EQ(ended.exitCode, 1);
    }
    const platform::Box expected{.text =
                                     "Run-time error '381':\r\n\r\nInvalid property array index",
                                 .title = "Lodrin",
                                 .icon = platform::Icon::Critical};
    EXPECT_EQ(prompts_.boxes, (std::vector<platform::Box>{expected}));
}

TEST_F(DispatchTest, NoTickRunsWhileTheLastErrorIsShown)
{
    prompts_.whileOpen = [this] { Tick(); };
    EXPECT_THROW(Dispatch(busyShop_, [](Shop& /*shop*/) { throw std::bad_alloc(); }),
                 platform::ProgramEnded);
    EXPECT_EQ(ticks_, 0);
    EXPECT_EQ(prompts_.boxes.back().text, "Run-time error '7':\r\n\r\nOut of memory");
}

TEST_F(DispatchTest, TheEndOfTheProgramPassesTheDoor)
{
    EXPECT_THROW(Dispatch(busyShop_, [](Shop& on) { on.platform.program.End(); }),
                 platform::ProgramEnded);
    EXPECT_TRUE(prompts_.boxes.empty());
}

TEST_F(DispatchTest, DoEventsLetsWindowsRepaint)
{
    DoEvents(busyShop_);
    EXPECT_EQ(fakes.events.count, 1);
}

}  // namespace
}  // namespace lodrin
