// SPDX-License-Identifier: Apache-2.0
// mnuSetupTest: the set-up menu and the refresh of the repair orders.
#include "setup/mnuSetup.h"

#include "app/Dispatch.h"
#include "setup/frmStatus.h"
#include "tests/support/ShopFixture.h"

namespace {

using namespace tests;

class mnuSetupTest : public ShopFixture {
protected:
    void ChooseItem(std::int16_t index)
    {
        lodrin::Dispatch(shop,
                         [index](lodrin::Shop& on) { lodrin::mnuSetupItems_Click(on, index); });
    }
    std::vector<std::string> RepairOrders() const
    {
        std::vector<std::string> entries;
        for (int index = 0; index < shop.window.cboRO.ListCount(); ++index)
            entries.push_back(shop.window.cboRO.List(index));
        return entries;
    }
};

TEST_F(mnuSetupTest, StatusWindowIsMadeOnFirstUseAndTheSameOneIsShownAgain)
{
    Open();
    EXPECT_EQ(shop.forms.status, nullptr);
    ChooseItem(0);
    const lodrin::frmStatus* first = shop.forms.status.get();
    ASSERT_NE(first, nullptr);
    ChooseItem(0);
    EXPECT_EQ(shop.forms.status.get(), first);
    EXPECT_EQ(dialogs.statuses, 2);
}

TEST_F(mnuSetupTest, MainWindowTakesNoInputWhileTheStatusWindowIsShown)
{
    Open();
    int handled = 0;
    dialogs.whileStatusIsOpen = [&](lodrin::Shop& on) {
        lodrin::Dispatch(on, [&](lodrin::Shop&) { ++handled; });
    };
    ChooseItem(0);
    EXPECT_EQ(handled, 0);
    lodrin::Dispatch(shop, [&](lodrin::Shop&) { ++handled; });
    EXPECT_EQ(handled, 1);
}

TEST_F(mnuSetupTest, AnyOtherItemDoesNothing)
{
    Open();
    for (const std::int16_t index : {std::int16_t{1}, std::int16_t{-1}, std::int16_t{32767}})
        ChooseItem(index);
    EXPECT_EQ(dialogs.statuses, 0);
    EXPECT_EQ(shop.forms.status, nullptr);
}

TEST_F(mnuSetupTest, RefreshWithoutOpenRepairOrdersLeavesAnEmptyListAndShowsNoMessage)
{
    Open();
    lodrin::Dispatch(shop, lodrin::mnuSynchRO_Click);
    EXPECT_TRUE(RepairOrders().empty());
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
    EXPECT_TRUE(Reports().empty());
}

TEST_F(mnuSetupTest, RefreshShowsNewOrdersWithoutAsking)
{
    Open();
    Given({RepairOrder(1001)});
    lodrin::Dispatch(shop, lodrin::mnuSynchRO_Click);
    EXPECT_EQ(RepairOrders(), (std::vector<std::string>{"1001  1999 Ford 1001"}));
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
}

TEST_F(mnuSetupTest, RefreshWithoutDatabaseReportsAndKeepsTheList)
{
    Given({RepairOrder(1001)});
    Open();
    shop.state.database.Close();
    shop.state.database = dao::Database();
    lodrin::Dispatch(shop, lodrin::mnuSynchRO_Click);
    EXPECT_EQ(RepairOrders(), (std::vector<std::string>{"1001  1999 Ford 1001"}));
    ASSERT_FALSE(Reports().empty());
    EXPECT_EQ(Reports().front(), "91 Sub frmLodrin!GetROList()");
}

}  // namespace
