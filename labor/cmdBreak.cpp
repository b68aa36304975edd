// SPDX-License-Identifier: Apache-2.0
#include "labor/cmdBreak.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "data/Tables.h"
#include "floor/EmployeeRow.h"
#include "floor/FindRecord.h"
#include "floor/VerifyPIN.h"
#include "labor/LeaveJob.h"
#include "labor/WriteHistory.h"

namespace lodrin {

using IfItFails::SkipBranch;
using IfItFails::TakeBranch;

void cmdBreak_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!cmdBreak_Click()");
    platform::Grid& board = shop.window.grdEmp;

    // It is he who goes, and he says how far the job has come.
    if (!attempt.Test([&] { return VerifyPIN(shop); }, SkipBranch)) return;
    if (!TellsProgress(attempt, shop)) return;

    // Without an open job there is nothing to close.
    if (attempt.Test([&] { return OrderOfJob(shop) == 0; }, TakeBranch)) return;

    // The repair order becomes the current record; the labor goes there.
    if (!FindsOrderOfJob(attempt, shop)) return;
    if (attempt.Test([&] { return !board.Text(LDEmp::Customer.column).empty(); }, TakeBranch))
        attempt([&] { WriteHistory(shop); });

    // He is idle; his day goes on.
    if (!FindsEmployee(attempt, shop)) return;
    EmployeeRow row(attempt, shop.state.employees, board);
    row.Edit();
    row.ClearJob();
    row.Save();
}

}  // namespace lodrin
