// SPDX-License-Identifier: Apache-2.0
#include "labor/WriteHistory.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "base/Format.h"
#include "data/Tables.h"
#include "floor/StoreAndStay.h"
#include "labor/ClockTime.h"
#include "labor/GetHistory.h"
#include "labor/Hours.h"
#include "labor/JobOnBoard.h"
#include "labor/WriteLabor.h"

namespace lodrin {

namespace {

// A job that starts and ends in the same minute is none; one minute is 0.02 hours.
constexpr double kShortestJob = 0.01;

// Who, which day, from when to when, on which order, under which labor type.
void DescribeJob(const ResumeNext& attempt, dao::Recordset& history, const platform::Grid& board,
                 const platform::Clock& clock)
{
    attempt([&] { history[LDHistory::EmpID] = base::ValLong(board.Value(LDEmp::EmpID.column)); });
    attempt([&] { history[LDHistory::WorkDate] = board.Value(LDEmp::WorkDate.column); });
    attempt([&] { history[LDHistory::JobStart] = board.Value(LDEmp::StartJob.column); });
    attempt([&] { history[LDHistory::JobEnd] = base::Format(clock.Now(), kClockTime); });
    attempt(
        [&] { history[LDHistory::WONumb] = base::ValLong(board.Value(LDEmp::WONumber.column)); });
    attempt([&] { history[LDHistory::WOID] = base::ValLong(board.Value(LDEmp::WOID.column)); });
    attempt([&] { history[LDHistory::GLType] = board.Value(LDEmp::GLType.column); });
}

// When the day ends by itself, a job that could not be recorded is tried again, each second of the
// minute; its labor is posted the first time only.
void Post(const ResumeNext& attempt, Shop& shop)
{
    MainWindowState& state = shop.state;
    bool first = true;
    attempt([&] { first = state.postedOnBoard.insert(JobOnBoard(shop.window.grdEmp)).second; });
    if (first || !state.automaticEndOfDay) attempt([&] { WriteLabor(shop); });
}

}  // namespace

void WriteHistory(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!WriteHistory()");
    dao::Recordset& history = shop.state.history;
    const platform::Grid& board = shop.window.grdEmp;

    // The open job of the board's row becomes a history row.
    const bool begun = attempt.Succeeds([&] { history.AddNew(); });
    DescribeJob(attempt, history, board, shop.platform.clock);

    // How long it lasted, from the two clock readings as the row holds them.
    base::Value hours;
    attempt([&] {
        hours = HoursBetween(history[LDHistory::JobStart], history[LDHistory::JobEnd], "###.00");
    });

    // A job within one minute leaves no trace.
    if (attempt.Test([&] { return base::Val(hours) <= kShortestJob; }, IfItFails::TakeBranch))
        return attempt([&] { history.CancelUpdate(); });

    attempt([&] { history[LDHistory::Hrs] = base::Format(hours, "##.00"); });
    attempt([&] { history[LDHistory::VehDesc] = board.Value(LDEmp::VehDesc.column); });
    attempt([&] { history[LDHistory::Customer] = board.Value(LDEmp::Customer.column); });

    const Stored stored = StoreAndStay(attempt, history);
    if (stored != Stored::No)
        attempt([&] { shop.state.recordedOnBoard.insert(JobOnBoard(board)); });

    // Its labor is posted from the record at hand: the stored row, or the one that could not be
    // stored and is pending still. Any other is an earlier job, which would be paid twice.
    if (begun && stored != Stored::NotCurrent) Post(attempt, shop);

    // The window shows it.
    attempt([&] { GetHistory(shop); });
    attempt([&] { GetLast10(shop); });
}

}  // namespace lodrin
