// SPDX-License-Identifier: Apache-2.0
// SampleShopTest: an evening and a morning in two real shops, looked at by an independent reader.
#include "base/Calendar.h"
#include "floor/cboRO.h"
#include "labor/GetHistory.h"
#include "tests/support/SampleShopDays.h"
#include "tests/support/SampleShopFixture.h"
#include "tests/support/StartTexts.h"

#include <string>

namespace {

using namespace tests;

constexpr int kEnter = 13;

class SampleShopTest : public SampleShopFixture {
protected:
    // Copies the shop and opens the main window over it.
    void OpenShop(const char* name, std::initializer_list<const char*> boxes)
    {
        TakeShop(name);
        if (!IsSkipped()) StartProgram(base::DateFrom({2009, 12, 30, 7, 0, 0}), boxes);
    }

    void TypeNumber(const char* number)
    {
        world->shop.window.cboRO.SetText(number);
        lodrin::Dispatch(world->shop,
                         [](lodrin::Shop& shop) { lodrin::cboRO_KeyUp(shop, kEnter); });
    }

    void DoubleClickFirstOfLastJobs(const char* entry)
    {
        platform::ListBox& list = world->shop.window.lstHistory;
        ASSERT_EQ(list.List(0), entry);
        list.SetListIndex(0);
        lodrin::Dispatch(world->shop, lodrin::lstHistory_DblClick);
    }
};

TEST_F(SampleShopTest, AnEveningInTheShopLeavesExactlyItsJobs)
{
    OpenShop("shop", {kEmployeesAdded});
    if (IsSkipped()) return;

    // Anthony Jones has refinished since 08:23 AM. He turns to the Honda, later to the Hyundai, and
    // comes back to the Honda.
    world->At("05:30 PM").Select("Jones, Anthony").Types("0992").Picks("BL", "Paint");
    TypeNumber("10125");
    world->At("06:10 PM").Types("0992").Picks("RL", "Mechanical").PicksOrder(10011);
    world->At("08:00 PM").Types("0992").Picks("ML", "Paint");
    DoubleClickFirstOfLastJobs("10125   1996 Honda CR-V EX AWD");
    ExpectTalkIsOver();
    // A number typed without the separator is the one thing that is reported.
    EXPECT_EQ(world->Reports(), (std::vector<std::string>{"5 Sub frmLodrin!cboRO_KeyUp()"}));

    ExpectEvening(sample, file);
}

TEST_F(SampleShopTest, FirstMorningInANewShopBuildsItsTablesAndKeepsTheRest)
{
    OpenShop("shop-fresh", {kEmployeesAdded, kNoDescriptions});
    if (IsSkipped()) return;

    // Michelle Gomez straightens the Chevrolet, cleans the truck, and comes back to the Chevrolet.
    world->At("07:30 AM").Select("Gomez, Michelle").Types("7802").Picks("FL", "Paint");
    TypeNumber("10037");
    world->At("09:00 AM").Types("7802").Picks("DL", "Body").PicksOrder(10112);
    world->At("10:10 AM").Types("7802").Picks("BL", "Paint");
    DoubleClickFirstOfLastJobs("10037   2001 Chevrolet Malibu LT");
    ExpectTalkIsOver();

    ExpectFirstMorning(sample, file);
}

}  // namespace
