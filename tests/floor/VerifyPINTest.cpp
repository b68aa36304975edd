// SPDX-License-Identifier: Apache-2.0
// VerifyPINTest: who may proceed.
#include "floor/VerifyPIN.h"

#include "data/Tables.h"
#include "floor/grdEmp.h"
#include "labor/GetHistory.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;

class VerifyPINTest : public ShopFixture {
protected:
    // Bob with this PIN stands on the board; he types this, or is not asked.
    bool Passes(const base::Value& pin, const char* typed = nullptr)
    {
        Given({Employee("Jones, Bob", 8).With(lodrin::Profile::PIN, pin)});
        Select("Jones, Bob");
        if (typed != nullptr) Types(typed);
        return lodrin::VerifyPIN(shop);
    }
};

TEST_F(VerifyPINTest, EmployeeWithNullPINIsNotAsked)
{
    EXPECT_TRUE(Passes(base::Null{}));
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
}

TEST_F(VerifyPINTest, EmployeeWithEmptyPINIsNotAsked)
{
    EXPECT_TRUE(Passes(""));
}

TEST_F(VerifyPINTest, EmployeeWithBlankPINIsNotAsked)
{
    EXPECT_TRUE(Passes("   "));
}

TEST_F(VerifyPINTest, RightPINPassesAndThePromptReadsAsItShould)
{
    EXPECT_TRUE(Passes("1234", "1234"));
    ASSERT_EQ(fakes.prompts.inputs.size(), 1U);
    EXPECT_EQ(fakes.prompts.inputs[0].text, "Please enter your PIN");
    EXPECT_EQ(fakes.prompts.inputs[0].title, "Enter PIN");
}

TEST_F(VerifyPINTest, BlanksAroundEitherPINDoNotCount)
{
    EXPECT_TRUE(Passes(" 1234 ", "  1234 "));
}

TEST_F(VerifyPINTest, WrongPINFails)
{
    EXPECT_FALSE(Passes("1234", "1243"));
}

TEST_F(VerifyPINTest, UpperAndLowerCaseAreDistinct)
{
    EXPECT_FALSE(Passes("abcd", "ABCD"));
}

TEST_F(VerifyPINTest, CancelledPromptFails)
{
    EXPECT_FALSE(Passes("1234", ""));
}

TEST_F(VerifyPINTest, EveryActionAsksAfresh)
{
    ASSERT_TRUE(Passes("1234", "1234"));
    Types("1234");
    EXPECT_TRUE(lodrin::VerifyPIN(shop));
    EXPECT_EQ(fakes.prompts.inputs.size(), 2U);
}

TEST_F(VerifyPINTest, EachStepOfTheDayAsksOnce)
{
    const auto asked = [this] { return fakes.prompts.inputs.size(); };
    Given({Employee("Jones, Bob", 8).With("PIN", "1234"), RepairOrder(1001), RepairOrder(1002),
           ProgressText("All done")});
    At("08:00 AM").Select("Jones, Bob").Types("1234").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(asked(), 1U);
    At("09:00 AM").Types("1234").Picks("BL", "Paint").Starts(1002);
    EXPECT_EQ(asked(), 2U);
    At("12:00 PM").Types("1234").ConfirmsProgress().GoesOnBreak();
    EXPECT_EQ(asked(), 3U);
    At("12:30 PM").Types("1234").Picks("BL", "Paint").Starts(1001);
    EXPECT_EQ(asked(), 4U);
    At("04:30 PM").IsSure().Types("1234").ConfirmsProgress().EndsDay();
    EXPECT_EQ(asked(), 5U);
    EXPECT_EQ(Totals().size(), 1U);
}

TEST_F(VerifyPINTest, EmployeeWithoutProfileIsRefusedWithoutAPrompt)
{
    Given({Employee("Jones, Bob", 8).Without("Profile")});
    Select("Jones, Bob");
    EXPECT_FALSE(lodrin::VerifyPIN(shop));
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
    EXPECT_TRUE(Reports().empty());
}

// Wherever a PIN is asked for, whoever is turned away is turned away alike, and nothing is written,
// also when the first on the board has a job open.
class TurnedAwayTest : public VerifyPINTest {
protected:
    TurnedAwayTest()
    {
        Given({Employee("Jones, Bob", 8), RepairOrder(1001), RepairOrder(1002)});
        At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
    }
    void TearDown() override
    {
        EXPECT_EQ(Stored(), before);
        EXPECT_TRUE(fakes.prompts.inputs.empty());
        EXPECT_EQ(dialogs.glSelects, 1);
        EXPECT_EQ(dialogs.progresses, 0);
        EXPECT_EQ(Reports(), reports);
        VerifyPINTest::TearDown();
    }

    Contents before;
    std::vector<std::string> reports;
};

// Whoever has no profile.
class NoProfileTest : public TurnedAwayTest {
protected:
    NoProfileTest()
    {
        GivenNo("Profile");
        before = Stored();
    }
};

TEST_F(NoProfileTest, StartsNoJob)
{
    fakes.prompts.Expect("Invalid PIN entered");
    At("09:00 AM").Starts(1002);
}

TEST_F(NoProfileTest, GoesOnNoBreak)
{
    At("09:00 AM").GoesOnBreak();
}

TEST_F(NoProfileTest, EndsNoDay)
{
    At("09:00 AM").IsSure().EndsDay();
}

// Nobody is chosen on the board until somebody has come to it.
class NobodyChosenTest : public TurnedAwayTest {
protected:
    NobodyChosenTest()
    {
        Open();
        before = Stored();
    }
    void TearDown() override
    {
        EXPECT_EQ(shop.state.currentEmployee, -1);
        EXPECT_EQ(shop.window.grdEmp.Row(), 0);
        TurnedAwayTest::TearDown();
    }
};

TEST_F(NobodyChosenTest, StartsNoJob)
{
    fakes.prompts.Expect("Invalid PIN entered");
    At("09:00 AM").Starts(1002);
}

TEST_F(NobodyChosenTest, GoesOnNoBreak)
{
    At("09:00 AM").GoesOnBreak();
}

TEST_F(NobodyChosenTest, EndsNoDay)
{
    At("09:00 AM").IsSure().EndsDay();
}

TEST_F(NobodyChosenTest, StartsNoEarlierJobAgain)
{
    lodrin::lstHistory_DblClick(shop);
    reports = {"5 Sub frmLodrin!lstHistory_DblClick()"};  // there is no number in no entry
}

TEST_F(NobodyChosenTest, IsChosenByNoClickBesideTheRows)
{
    const std::string name = shop.window.lblEmpName.Caption();
    lodrin::grdEmp_Click(shop);
    lodrin::grdEmp_RowColChange(shop, 0, 0);
    EXPECT_EQ(shop.window.lblEmpName.Caption(), name);
}

TEST_F(VerifyPINTest, EmptyBoardIsRefusedSilently)
{
    Open();
    EXPECT_FALSE(lodrin::VerifyPIN(shop));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(VerifyPINTest, QueryTextIsKept)
{
    ASSERT_TRUE(Passes(base::Null{}));
    EXPECT_EQ(shop.state.sqlText, "SELECT PIN FROM Profile WHERE ProfileNumber = 8");
}

}  // namespace
