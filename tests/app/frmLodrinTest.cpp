// SPDX-License-Identifier: Apache-2.0
#include "app/frmLodrin.h"

#include "base/Calendar.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

namespace lodrin {
namespace {

constexpr const char* kNothingToSynchronise =
    "No employees found to add or update to the employee list.  Ensure employee data exists in the "
    "Tarvex Management system and try again.";
constexpr const char* kNoStatusDescriptions =
    "You have not yet set up your status descriptions.  Select Setup/Status Descriptions from the "
    "menu before you start using the Lodrin program.";

class frmLodrinTest : public tests::ShopFixture {
protected:
    frmLodrinTest()
    {
        fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
        fakes.files.Write("C:/Shop/Kelvaro.mdb", "");
    }

    void Load()
    {
        fakes.prompts.Expect(kNothingToSynchronise);
        Form_Load(shop);
    }
};

TEST_F(frmLodrinTest, TheLoadStartsTheTimerAndShowsTheDateWithoutTheTime)
{
    Load();
    EXPECT_EQ(shop.window.Timer1.interval, 1000);
    EXPECT_EQ(shop.window.lblDate.Caption(), "03/15/2004");
}

TEST_F(frmLodrinTest, TheLoadFillsTheListsAndOpensTheStatusDescriptions)
{
    Given({tests::Employee("Jones, Bob", 8), tests::RepairOrder(1001)});
    Load();
    EXPECT_EQ(shop.window.grdEmp.RowCount(), 1);
    EXPECT_EQ(shop.window.cboRO.ListCount(), 1);
    EXPECT_EQ(shop.state.rsStatus[Status::GLType].Value(), base::Value("BL"));
    EXPECT_TRUE(shop.state.firstActivation);
    EXPECT_EQ(Reports(), std::vector<std::string>{});
}

TEST_F(frmLodrinTest, WithoutStatusDescriptionsTheWarningComesOnceAfterTheListsAreFilled)
{
    Given({tests::Employee("Jones, Bob", 8)});
    GivenNo("Status");
    fakes.prompts.Expect(kNothingToSynchronise);
    fakes.prompts.Expect(kNoStatusDescriptions);
    Form_Load(shop);
    EXPECT_EQ(fakes.prompts.boxes.back(),
              (platform::Box{.text = kNoStatusDescriptions, .title = "Lodrin"}));
    EXPECT_EQ(shop.window.grdEmp.RowCount(), 1);
    EXPECT_TRUE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, WithoutTheDatabaseTheListsAreEmptyAndTheWarningIsShown)
{
    disk.Remove(DatabasePath());
    fakes.prompts.Expect(kNothingToSynchronise);
    fakes.prompts.Expect(kNoStatusDescriptions);
    Form_Load(shop);
    EXPECT_EQ(shop.window.grdEmp.RowCount(), 0);
    EXPECT_EQ(shop.window.cboRO.ListCount(), 0);
    EXPECT_EQ(Reports().front(), "3024 Sub frmLodrin!DBOpen()");
    EXPECT_EQ(Reports().back(), "91 Sub frmLodrin!Form_Load()");
    EXPECT_TRUE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, TheFirstActivationUnloadsTheSplashAndShowsThePath)
{
    shop.state.firstActivation = true;
    dialogs.splashVisible = true;
    Form_Activate(shop);
    EXPECT_FALSE(dialogs.splashVisible);
    EXPECT_EQ(shop.window.stsLD.Caption(), "Database Path: C:\\Shop");
    EXPECT_FALSE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, LaterActivationsDoNothing)
{
    dialogs.splashVisible = true;
    Form_Activate(shop);
    EXPECT_TRUE(dialogs.splashVisible);
    EXPECT_EQ(shop.window.stsLD.Caption(), "");
}

TEST_F(frmLodrinTest, EveryTickShowsTheTimeBehindFiveBlanks)
{
    EXPECT_EQ(shop.window.caption.Caption(), "Kelvaro Lodrin");
    fakes.clock.Set(base::DateFrom({2004, 3, 15, 17, 55, 3}));
    Timer1_Timer(shop);
    EXPECT_EQ(shop.window.caption.Caption(), "Lodrin -      5:55:03 PM");
    fakes.clock.Advance(1);
    Timer1_Timer(shop);
    EXPECT_EQ(shop.window.caption.Caption(), "Lodrin -      5:55:04 PM");
}

TEST_F(frmLodrinTest, BothExitsUnloadTheMainWindow)
{
    dialogs.mainVisible = true;
    cmdExit_Click(shop);
    EXPECT_FALSE(dialogs.mainVisible);
    dialogs.mainVisible = true;
    picExit_Click(shop);
    EXPECT_FALSE(dialogs.mainVisible);
}

TEST_F(frmLodrinTest, NothingIsWrittenWhenTheWindowCloses)
{
    Load();
    const tests::Contents before = Stored();
    Form_QueryUnload(shop);
    cmdExit_Click(shop);
    EXPECT_EQ(Stored(), before);
}

}  // namespace
}  // namespace lodrin
