// SPDX-License-Identifier: Apache-2.0
#include "floor/grdEmp.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "floor/ColumnLayout.h"
#include "labor/ClockTime.h"
#include "labor/GetHistory.h"

#include <array>

namespace lodrin {

namespace {

using platform::Alignment;

// From left to right.
constexpr std::array<ColumnLayout, 8> kBoardColumns{{
    {LDEmp::Name.column, "Employee", 2000},
    {LDEmp::StartDay.column, "Start Day", 900, kClockTime, Alignment::Center, Alignment::Center},
    {LDEmp::GLType.column, "Type", 500, "", Alignment::Center},
    {LDEmp::VehDesc.column, "Vehicle", 1700, "", Alignment::Center},
    {LDEmp::Customer.column, "Customer", 1700, "", Alignment::Center},
    {LDEmp::WONumber.column, "WO #", 900, "#########", Alignment::Center, Alignment::Center},
    {LDEmp::StartJob.column, "Job Start", 900, kClockTime, Alignment::Center, Alignment::Center},
    {LDEmp::EndDay.column, "End Day", 900, kClockTime, Alignment::Center, Alignment::Center},
}};

// A click that reaches no row chooses nobody.
bool NobodyIsChosen(const Shop& shop)
{
    return shop.window.grdEmp.Row() == 0;
}

// Whoever stands on the current row is the employee everything acts on; his jobs are shown.
void ChooseEmployee(const ResumeNext& attempt, Shop& shop)
{
    const platform::Grid& board = shop.window.grdEmp;
    attempt([&] { shop.state.currentEmployee = base::ValLong(board.Text(LDEmp::EmpID.column)); });
    attempt([&] { GetHistory(shop); });
    attempt([&] { GetLast10(shop); });
}

void ShowName(const ResumeNext& attempt, frmLodrin& window)
{
    attempt([&] { window.lblEmpName.SetCaption(window.grdEmp.Text(LDEmp::Name.column)); });
}

}  // namespace

void EmpView(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!EmpView()");
    LayOut(attempt, shop.window.grdEmp, kBoardColumns);
}

void grdEmp_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!grdEmp_Click()");
    if (NobodyIsChosen(shop)) return;
    ShowName(attempt, shop.window);
    ChooseEmployee(attempt, shop);
}

void grdEmp_RowColChange(Shop& shop, int lastRow, int /*lastColumn*/)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!grdEmp_RowColChange()");
    if (NobodyIsChosen(shop)) return;
    // A move within the row leaves the name as it is.
    if (shop.window.grdEmp.Row() != lastRow) ShowName(attempt, shop.window);
    ChooseEmployee(attempt, shop);
    // What the former employee had typed is not this one's.
    attempt([&] { shop.window.cboRO.SetText(""); });
}

}  // namespace lodrin
