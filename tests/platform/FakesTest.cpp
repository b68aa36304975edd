// SPDX-License-Identifier: Apache-2.0
// FakesTest: the doubles of the world outside do what tests rely on.
#include "platform/fake/Fakes.h"

#include "base/Calendar.h"
#include "base/NumberedError.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace {

using platform::Answer;

TEST(ScriptedPromptsTest, AnswersComeInTheOrderLaidDown)
{
    platform::ScriptedPrompts prompts;
    prompts.Expect("Right date?", Answer::No);
    prompts.ExpectInput("PIN", "1234");
    prompts.ExpectFile("/shop/Kelvaro.mdb");
    EXPECT_EQ(prompts.Show({.text = "Right date?"}), Answer::No);
    EXPECT_EQ(prompts.Input({.text = "PIN"}), "1234");
    EXPECT_EQ(prompts.Pending().size(), 1U);
    EXPECT_EQ(prompts.OpenFile("ALL|*.*"), "/shop/Kelvaro.mdb");
    EXPECT_TRUE(prompts.Pending().empty());
    EXPECT_EQ(prompts.Transcript(),
              (std::vector<std::string>{"Right date?", "PIN", "(open-file dialog)"}));
    EXPECT_EQ(prompts.filters.at(0), "ALL|*.*");
}

TEST(ScriptedPromptsTest, UnexpectedQuestionsFailTheTest)
{
    platform::ScriptedPrompts prompts;
    EXPECT_THROW(prompts.Show({.text = "Nobody knows"}), std::logic_error);
    prompts.Expect("One");
    EXPECT_THROW(prompts.Show({.text = "Two"}), std::logic_error);
    EXPECT_THROW((void)prompts.Input({.text = "One"}), std::logic_error);
    EXPECT_EQ(prompts.Pending().size(), 1U);
}

TEST(ScriptedPromptsTest, CancelledFileDialogRaises32755)
{
    platform::ScriptedPrompts prompts;
    prompts.ExpectFileCancelled();
    try {
        (void)prompts.OpenFile("");
        ADD_FAILURE() << "nothing was raised";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 32755);
    }
}

TEST(FixedClockTest, AdvancesByWholeSeconds)
{
    platform::FixedClock clock(base::DateFrom({2004, 3, 15, 23, 58, 59}));
    clock.Advance(61);
    EXPECT_EQ(base::PartsOf(clock.Now()), (base::DateParts{2004, 3, 16, 0, 0, 0}));
}

TEST(FixedFormatsTest, ReadAsInTheUnitedStates)
{
    const platform::FixedFormats formats;
    const base::Date evening = base::DateFrom({2024, 1, 15, 17, 55, 3});
    EXPECT_EQ(formats.LongDate(evening), "Monday, January 15, 2024");
    EXPECT_EQ(formats.ShortDate(evening), "1/15/2024");
    EXPECT_EQ(formats.Time(evening), "5:55:03 PM");
    EXPECT_EQ(formats.Time(base::DateFrom({2024, 1, 15, 0, 5, 9})), "12:05:09 AM");
}

TEST(FakesTest, EndOfTheProgramUnwinds)
{
    platform::Fakes fakes;
    const platform::Services services = fakes.AsServices();
    EXPECT_THROW(services.program.End(), platform::ProgramEnded);
    EXPECT_EQ(services.paths.ToHost("C:\\Shop\\Kelvaro.mdb"), "C:/Shop/Kelvaro.mdb");
}

}  // namespace
