// SPDX-License-Identifier: Apache-2.0
#include "labor/cmdEndDay.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Format.h"
#include "data/Tables.h"
#include "floor/EmployeeRow.h"
#include "floor/FindRecord.h"
#include "floor/VerifyPIN.h"
#include "labor/ClockTime.h"
#include "labor/DailyTotals.h"
#include "labor/JobOnBoard.h"
#include "labor/LeaveJob.h"
#include "labor/WriteHistory.h"

#include <string>

namespace lodrin {

namespace {

constexpr const char* kAreYouSure = "This will close out your time for today.  Are you sure?";
constexpr const char* kEndOfDay = "End Of Day";

using IfItFails::SkipBranch;
using IfItFails::TakeBranch;

// He is sure, it is he, and he says how far the job has come.
bool EmployeeEndsHisDay(const ResumeNext& attempt, Shop& shop)
{
    const auto refuses = [&] {
        return Ask(shop, {.text = kAreYouSure,
                          .title = kEndOfDay,
                          .buttons = platform::Buttons::YesNo}) == platform::Answer::No;
    };
    if (attempt.Test(refuses, TakeBranch)) return false;
    if (!attempt.Test([&] { return VerifyPIN(shop); }, SkipBranch)) return false;
    return TellsProgress(attempt, shop);
}

// Nobody sees that a job stands on the board still after it was closed when the day ends by itself,
// once for each row of the board and each second of the minute: it is recorded once.
bool WasClosedBefore(const MainWindowState& state, const platform::Grid& board)
{
    return state.automaticEndOfDay && state.recordedOnBoard.count(JobOnBoard(board)) > 0;
}

void EndDay(EmployeeRow row, const platform::Clock& clock)
{
    row.Edit();
    row.ClearJob();
    row.Write(LDEmp::EndDay, [&] { return base::Format(clock.Now(), kClockTime); });
    row.Save();
}

}  // namespace

void cmdEndDay_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!cmdEndDay_Click()");
    MainWindowState& state = shop.state;
    platform::Grid& board = shop.window.grdEmp;

    // At the end of the calendar day nobody is there to be asked.
    if (!state.automaticEndOfDay && !EmployeeEndsHisDay(attempt, shop)) return;

    // The repair order becomes the current record. Whoever has no job has none, and is told so: his
    // day stays open until the next start of the program.
    if (!FindsOrderOfJob(attempt, shop)) return;

    // The job is closed before it is cleared from the board, and counted afterwards.
    const auto jobIsOpen = [&] { return OrderOfJob(shop) != 0 && !WasClosedBefore(state, board); };
    if (attempt.Test(jobIsOpen, TakeBranch)) attempt([&] { WriteHistory(shop); });

    // Where his record is gone, his row of the board stays as it is.
    if (FindsEmployee(attempt, shop))
        EndDay(EmployeeRow(attempt, state.employees, board), shop.platform.clock);
    DailyTotals(attempt, shop);
}

}  // namespace lodrin
