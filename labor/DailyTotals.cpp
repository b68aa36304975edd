// SPDX-License-Identifier: Apache-2.0
#include "labor/DailyTotals.h"

#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Calendar.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "floor/StoreAndStay.h"
#include "labor/Hours.h"

namespace lodrin {

namespace {

using IfItFails::TakeBranch;

std::string OfDay(const std::string& employee, const std::string& day)
{
    return " WHERE EmpID = " + employee + " AND WorkDate = #" + day + "#";
}

}  // namespace

std::string CountOfJobs(const std::string& employee, const std::string& day)
{
    return "SELECT Count(ID) as JobCt, Sum(Hrs) as JobHrs FROM LDHistory" + OfDay(employee, day);
}

std::string TotalsOfDay(const std::string& employee, const std::string& day)
{
    return "SELECT * FROM LDTotals" + OfDay(employee, day);
}

bool EditDayOrAddNew(const ResumeNext& attempt, dao::Recordset& totals)
{
    if (attempt.Test([&] { return totals.RecordCount() > 0; }, TakeBranch)) {
        attempt([&] { totals.Edit(); });
        return false;
    }
    attempt([&] { totals.AddNew(); });
    return true;
}

void WriteFigures(const ResumeNext& attempt, dao::Recordset& jobs, dao::Recordset& totals)
{
    attempt([&] {
        totals[LDTotals::TotHrs] =
            base::Val(HoursBetween(totals[LDTotals::StartDay], totals[LDTotals::EndDay], "###.00"));
    });
    // The sum of no jobs is null, and stays so.
    if (attempt.Test([&] { return jobs.RecordCount() < 1; }, TakeBranch)) {
        attempt([&] { totals[LDTotals::JobCount] = 0; });
        attempt([&] { totals[LDTotals::JobHrs] = 0; });
    } else {
        attempt([&] { totals[LDTotals::JobCount] = jobs["JobCt"]; });
        attempt([&] { totals[LDTotals::JobHrs] = jobs["JobHrs"]; });
    }
}

void DailyTotals(const ResumeNext& attempt, Shop& shop)
{
    MainWindowState& state = shop.state;
    const platform::Grid& board = shop.window.grdEmp;
    const base::Date today = base::DatePartOf(shop.platform.clock.Now());
    const std::string employee = base::TextOf(state.currentEmployee);
    dao::Recordset jobs;
    dao::Recordset totals;

    // His closed jobs, and the row of the day if there is one.
    OpenRecords(attempt, state, state.database, jobs,
                [&] { return CountOfJobs(employee, board.Text(LDEmp::WorkDate.column)); });
    OpenRecords(attempt, state, state.database, totals, TotalsOfDay(employee, base::TextOf(today)));

    // A day ended twice keeps its one row.
    EditDayOrAddNew(attempt, totals);
    attempt([&] { totals[LDTotals::EmpID] = state.currentEmployee; });
    attempt([&] { totals[LDTotals::WorkDate] = today; });
    attempt([&] { totals[LDTotals::StartDay] = board.Value(LDEmp::StartDay.column); });
    attempt([&] { totals[LDTotals::EndDay] = board.Value(LDEmp::EndDay.column); });
    WriteFigures(attempt, jobs, totals);
    StoreAndStay(attempt, totals);

    attempt([&] { jobs.Close(); });
    attempt([&] { totals.Close(); });
}

}  // namespace lodrin
