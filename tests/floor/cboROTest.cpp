// SPDX-License-Identifier: Apache-2.0
// cboROTest: the repair-order box, its list and the two ways to start a job with it.
#include "floor/cboRO.h"

#include "data/Tables.h"
#include "tests/support/ShopFixture.h"

#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::LDEmp;
using lodrin::WorkOrder;

constexpr int kEnter = 13;

class cboROTest : public ShopFixture {
protected:
    std::vector<std::string> Entries() const
    {
        std::vector<std::string> entries;
        for (int index = 0; index < shop.window.cboRO.ListCount(); ++index)
            entries.push_back(shop.window.cboRO.List(index));
        return entries;
    }

    void Type(const std::string& text, int key = kEnter)
    {
        shop.window.cboRO.SetText(text);
        lodrin::cboRO_KeyUp(shop, key);
    }
};

TEST_F(cboROTest, OpenOrdersAreListedByNumberWithTheirVehicle)
{
    Given({RepairOrder(1002), RepairOrder(1001),
           RepairOrder(1003)
               .With("WOType", "Estimate")
               .With(WorkOrder::ServiceItemDescriptionL1, base::Null{})});
    Open();
    EXPECT_EQ(Entries(),
              (std::vector<std::string>{"1001  1999 Ford 1001", "1002  1999 Ford 1002", "1003  "}));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cboROTest, OrdersWithoutNumberAreSkipped)
{
    Given({RepairOrder(1001).With(WorkOrder::WorkOrderNumber, base::Null{}),
           RepairOrder(1002).With(WorkOrder::WorkOrderNumber, 0),
           RepairOrder(1003).With(WorkOrder::WorkOrderNumber, -5), RepairOrder(1004)});
    Open();
    EXPECT_EQ(Entries(), (std::vector<std::string>{"1004  1999 Ford 1004"}));
}

TEST_F(cboROTest, ArchivedOrdersAndOtherKindsAreNeverListed)
{
    Given({RepairOrder(1001).With("Archived", true), RepairOrder(1002).With("WOType", "Invoice"),
           RepairOrder(1003).With("WOType", base::Null{})});
    Open();
    EXPECT_TRUE(Entries().empty());
}

TEST_F(cboROTest, EmptyResultLeavesTheFormerEntries)
{
    Given({RepairOrder(1001)});
    Open();
    GivenNo("WorkOrder");
    lodrin::GetROList(shop);
    EXPECT_EQ(Entries(), (std::vector<std::string>{"1001  1999 Ford 1001"}));
}

TEST_F(cboROTest, FillingIsToldToTheViewOnce)
{
    Given({RepairOrder(1001), RepairOrder(1002), RepairOrder(1003)});
    Open();
    int told = 0;
    shop.window.cboRO.changed = [&] { ++told; };
    lodrin::GetROList(shop);
    EXPECT_EQ(told, 1);
}

TEST_F(cboROTest, QueryTextIsKept)
{
    Open();
    lodrin::GetROList(shop);
    EXPECT_EQ(shop.state.sqlText, "SELECT * FROM WorkOrder WHERE WOType In('WorkOrder', "
                                  "'Estimate') AND Archived = FALSE ORDER BY WorkOrderNumber");
}

TEST_F(cboROTest, EnterInAnEmptyOrBlankBoxAndOtherKeysDoNothing)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    Select("Jones, Bob");
    Type("");
    Type("   ");
    Type("1001  ", 9);
    EXPECT_EQ(dialogs.glSelects, 0);
    EXPECT_TRUE(fakes.prompts.Transcript().empty());
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cboROTest, PickLeavesOnlyTheNumberInTheBoxAndStartsTheJob)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    Select("Jones, Bob").Picks("BL", "Paint").PicksOrder(1001);
    EXPECT_EQ(shop.window.cboRO.Text(), "1001");
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], 1001);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cboROTest, NumberTypedByHandStartsTheJobAndReportsTheMissingSeparator)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    Select("Jones, Bob").Picks("BL", "Paint");
    Type("1001");
    EXPECT_EQ(shop.window.cboRO.Text(), "1001");
    EXPECT_EQ(EmployeeRecord("Jones, Bob")[LDEmp::WONumber.name], 1001);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"5 Sub frmLodrin!cboRO_KeyUp()"}));
}

TEST_F(cboROTest, TextThatIsNoNumberStartsNothing)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    Select("Jones, Bob");
    Type("Ford  blue");
    EXPECT_EQ(shop.window.cboRO.Text(), "Ford");
    EXPECT_EQ(dialogs.glSelects, 0);
    shop.window.cboRO.SetText("Ford  blue");
    lodrin::cboRO_Click(shop);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"13 Sub frmLodrin!cboRO_Click()"}));
    EXPECT_EQ(dialogs.glSelects, 0);
}

TEST_F(cboROTest, ClickWithEmptyTextDoesNothing)
{
    Given({Employee("Jones, Bob", 8)});
    Select("Jones, Bob");
    shop.window.cboRO.SetText("");
    lodrin::cboRO_Click(shop);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(cboROTest, UnknownNumberIsRefusedByTheJobStart)
{
    Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
    fakes.prompts.Expect(
        "The RO you selected no long exists in the database, or is not accessable.");
    Select("Jones, Bob").Picks("BL", "Paint");
    Type("4711  ");
    EXPECT_EQ(fakes.prompts.boxes.at(0).title, "Lodrin");
}

TEST_F(cboROTest, WithoutDatabaseTheListStays)
{
    shop.window.cboRO.AddItem("1001  1999 Ford");
    lodrin::GetROList(shop);
    EXPECT_EQ(shop.window.cboRO.ListCount(), 1);
    EXPECT_EQ(Reports(), std::vector<std::string>(2, "91 Sub frmLodrin!GetROList()"));
}

}  // namespace
