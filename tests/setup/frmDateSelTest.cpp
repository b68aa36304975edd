// SPDX-License-Identifier: Apache-2.0
// frmDateSelTest: the dialog in which one date is picked.
#include "setup/frmDateSel.h"

#include "app/Dispatch.h"
#include "base/Calendar.h"
#include "tests/support/ShellFixture.h"

namespace {

using namespace tests;
using lodrin::frmDateSel;

constexpr double kIdes = 38061;  // March 15, 2004
constexpr double kTenToTwo = 38061 + 13.0 / 24 + 50.0 / 1440;

// Today is January 15, 2024, 5:55:03 PM.
class frmDateSelTest : public ShellFixture {
protected:
    frmDateSelTest()
    {
        form.hide = [this] { ++hidden; };
    }
    void Show(base::Date selected)
    {
        shop.values.selectedDate = selected;
        form.Form_Activate(shop);
    }
    frmDateSel& form = shop.forms.dateSel;
    int hidden = 0;
};

TEST_F(frmDateSelTest, CalendarStartsAtTheSelectedDate)
{
    Show({kTenToTwo});
    EXPECT_EQ(form.startingDate, "3/15/2004 1:50:00 PM");
    EXPECT_EQ(base::DatePartOf(form.Calendar1.Value()), base::Date{kIdes});
    EXPECT_EQ(hidden, 0);
}

TEST_F(frmDateSelTest, WithoutAValidStartingDateTheCalendarStartsAtToday)
{
    Show({});
    EXPECT_EQ(form.Calendar1.Value(), base::DateFrom({2024, 1, 15, 0, 0, 0}));
    // A time without a date is none either.
    Show({0.5});
    EXPECT_EQ(form.Calendar1.Value(), base::DateFrom({2024, 1, 15, 0, 0, 0}));
}

TEST_F(frmDateSelTest, CancelAfterMovingAroundStoresTheStartingDateWithoutItsTime)
{
    Show({kTenToTwo});
    form.Calendar1.SetValue({kIdes + 40});
    form.Command1_Click(shop);
    EXPECT_EQ(shop.values.selectedDate, base::Date{kIdes});
    EXPECT_EQ(hidden, 1);
    Show({kTenToTwo});
    form.Calendar1.SetValue({kIdes + 40});
    form.picCancel_Click(shop);
    EXPECT_EQ(shop.values.selectedDate, base::Date{kIdes});
    EXPECT_EQ(hidden, 2);
}

TEST_F(frmDateSelTest, CancelWithoutAnyDateLeavesNone)
{
    Show({});
    lodrin::Dispatch(shop, [this](lodrin::Shop& on) { form.Command1_Click(on); });
    EXPECT_EQ(shop.values.selectedDate, base::Date{0});
    EXPECT_EQ(hidden, 1);
}

TEST_F(frmDateSelTest, TimesAreDropped)
{
    using Procedure = void (frmDateSel::*)(lodrin::Shop&);
    for (const Procedure procedure : {&frmDateSel::cmdExit_Click, &frmDateSel::picExit_Click,
                                      &frmDateSel::Calendar1_DblClick}) {
        Show({kIdes});
        form.Calendar1.SetValue({kTenToTwo + 7});
        (form.*procedure)(shop);
        EXPECT_EQ(shop.values.selectedDate, base::Date{kIdes + 7});
    }
    EXPECT_EQ(hidden, 3);
}

TEST_F(frmDateSelTest, NextShowStartsFromWhatWasStored)
{
    Show({kIdes});
    form.Calendar1.SetValue({kIdes + 1});
    form.cmdExit_Click(shop);
    form.Form_Activate(shop);
    EXPECT_EQ(form.startingDate, "3/16/2004");
    EXPECT_EQ(form.Calendar1.Value(), base::Date{kIdes + 1});
}

TEST_F(frmDateSelTest, GuardedProceduresReportAndGoOn)
{
    Show({kIdes});
    form.startingDate = "no date";
    form.picCancel_Click(shop);
    EXPECT_EQ(Reports(), std::vector<std::string>{"13 Sub frmDateSel!picCancel_Click()"});
    EXPECT_EQ(shop.values.selectedDate, base::Date{kIdes});
    EXPECT_EQ(hidden, 1);
}

TEST_F(frmDateSelTest, CallerReadsTheDateWhenTheDialogIsHidden)
{
    dialogs.whileDateSelIsOpen = [](lodrin::Shop& on) {
        on.forms.dateSel.Calendar1.SetValue({kIdes + 2});
        lodrin::DispatchInDialog(on, [](lodrin::Shop& in) { in.forms.dateSel.cmdExit_Click(in); });
    };
    lodrin::Dispatch(shop, [](lodrin::Shop& on) { lodrin::ShowDateSel(on); });
    EXPECT_EQ(shop.values.selectedDate, base::Date{kIdes + 2});
}

}  // namespace
