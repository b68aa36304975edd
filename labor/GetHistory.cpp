// SPDX-License-Identifier: Apache-2.0
#include "labor/GetHistory.h"

#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/Text.h"
#include "data/Tables.h"
#include "floor/ColumnLayout.h"
#include "floor/StartJob.h"
#include "labor/ClockTime.h"

#include <array>
#include <string>

namespace lodrin {

namespace {

using platform::Alignment;

constexpr int kLastJobs = 10;
constexpr const char* kBetweenNumberAndVehicle = "   ";

// From left to right.
using Column = LDHistory::Column;
constexpr std::array<ColumnLayout, 6> kDailyColumns{{
    {Column::VehDesc, "Vehicle", 2500},
    {Column::WONumb, "WO #", 900, "", Alignment::Center},
    {Column::GLType, "Type", 500, "", Alignment::Center},
    {Column::JobStart, "Job Start", 1100, kClockTime, Alignment::Center, Alignment::Center},
    {Column::JobEnd, "Job End", 1100, kClockTime, Alignment::Center, Alignment::Center},
    {Column::Hrs, "Hrs", 900, "", Alignment::Center, Alignment::Center},
}};

}  // namespace

void GetHistory(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!GetHistory()");
    MainWindowState& state = shop.state;
    platform::Grid& daily = shop.window.grdDaily;

    // Today's jobs of the current employee, the newest first.
    OpenRecords(attempt, state, state.database, state.history, [&] {
        return "SELECT * FROM LDHistory WHERE EmpID = " + base::TextOf(state.currentEmployee) +
               " AND WorkDate = #" + base::TextOf(base::DatePartOf(shop.platform.clock.Now())) +
               "# ORDER BY JobStart DESC;";
    });

    // They fill the grid.
    const platform::ChangesHeld held(daily);
    attempt([&] { daily.Reset(); });
    attempt([&] { daily.Bind(state.history); });
    attempt([&] { GetHistoryView(shop); });
}

void GetHistoryView(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!GetHistoryView()");
    LayOut(attempt, shop.window.grdDaily, kDailyColumns);
}

void GetLast10(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!GetLast10()");
    MainWindowState& state = shop.state;
    platform::ListBox& list = shop.window.lstHistory;
    const platform::ChangesHeld held(list);
    dao::Recordset jobs;

    // All his jobs, in the order in which they were entered.
    attempt([&] { list.Clear(); });
    OpenRecords(attempt, state, state.database, jobs, [&] {
        return "SELECT * FROM LDHistory WHERE EmpID = " + base::TextOf(state.currentEmployee);
    });
    if (attempt.Test([&] { return jobs.RecordCount() <= 0; }, IfItFails::TakeBranch)) return;

    // The last ten, backwards.
    attempt([&] { jobs.MoveLast(); });
    for (int job = 0; job < kLastJobs; ++job) {
        if (attempt.Test([&] { return jobs.Bof(); }, IfItFails::TakeBranch)) break;
        attempt([&] {
            list.AddItem(base::TextOf(jobs[LDHistory::WONumb]) + kBetweenNumberAndVehicle +
                         base::TextOf(jobs[LDHistory::VehDesc]));
        });
        if (!attempt.Succeeds([&] { jobs.MovePrevious(); })) break;
    }
    attempt([&] { jobs.Close(); });
}

void lstHistory_DblClick(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!lstHistory_DblClick()");
    const std::string entry = shop.window.lstHistory.Text();

    // The number in front of the vehicle.
    std::string number;
    attempt([&] { number = base::Left(entry, base::InStr(entry, " ") - 1); });
    attempt([&] { StartJob(shop, base::ValLong(number)); });
}

}  // namespace lodrin
