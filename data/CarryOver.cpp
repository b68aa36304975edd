// SPDX-License-Identifier: Apache-2.0
#include "data/CarryOver.h"

#include "app/ForEachRecord.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Calendar.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "floor/NoJob.h"
#include "floor/StoreAndStay.h"
#include "labor/ClockTime.h"
#include "labor/DailyTotals.h"
#include "labor/Hours.h"
#include "labor/WriteLabor.h"

#include <string>

namespace lodrin {

namespace {

bool IsFromAnotherDay(const base::Value& workDate, base::Date today)
{
    return workDate.IsDate() && base::DatePartOf(base::ToDate(workDate)) != today;
}

// What was worked, on which order, until the end of that day.
void DescribeForgottenJob(const ResumeNext& attempt, dao::Recordset& history,
                          dao::Recordset& employee)
{
    attempt([&] { history[LDHistory::EmpID] = employee[LDEmp::EmpID.name]; });
    attempt([&] { history[LDHistory::WorkDate] = employee[LDEmp::WorkDate.name]; });
    attempt([&] { history[LDHistory::JobStart] = employee[LDEmp::StartJob.name]; });
    attempt([&] { history[LDHistory::JobEnd] = kLastMinute; });
    attempt([&] { history[LDHistory::WONumb] = employee[LDEmp::WONumber.name]; });
    attempt([&] { history[LDHistory::WOID] = employee[LDEmp::WOID.name]; });
    attempt([&] { history[LDHistory::GLType] = employee[LDEmp::GLType.name]; });
    attempt([&] {
        history[LDHistory::Hrs] =
            HoursBetween(history[LDHistory::JobStart], history[LDHistory::JobEnd], "##.00");
    });
    attempt([&] { history[LDHistory::VehDesc] = employee[LDEmp::VehDesc.name]; });
    attempt([&] { history[LDHistory::Customer] = employee[LDEmp::Customer.name]; });
}

// False when the job could not be recorded.
bool CloseJob(const ResumeNext& attempt, Shop& shop)
{
    dao::Recordset& history = shop.state.history;
    attempt([&] { history.AddNew(); });
    DescribeForgottenJob(attempt, history, shop.state.employees);
    // The posting reads the record at hand. Where that is not this job, another man's would be
    // charged twice.
    const Stored stored = StoreAndStay(attempt, history);
    if (stored == Stored::AndCurrent) attempt([&] { WriteLabor(shop); });
    return stored != Stored::No;
}

void WriteTotals(const ResumeNext& attempt, MainWindowState& state)
{
    dao::Recordset& employee = state.employees;
    dao::Recordset jobs;
    const auto textOf = [&](const BoardField& field) { return base::TextOf(employee[field.name]); };
    OpenRecords(attempt, state, state.database, jobs,
                [&] { return CountOfJobs(textOf(LDEmp::EmpID), textOf(LDEmp::WorkDate)); });
    dao::Recordset totals;
    OpenRecords(attempt, state, state.database, totals,
                [&] { return TotalsOfDay(textOf(LDEmp::EmpID), textOf(LDEmp::WorkDate)); });

    // A new row says whose day it is.
    if (EditDayOrAddNew(attempt, totals)) {
        attempt([&] { totals[LDTotals::EmpID] = employee[LDEmp::EmpID.name]; });
        attempt([&] { totals[LDTotals::WorkDate] = employee[LDEmp::WorkDate.name]; });
        attempt([&] { totals[LDTotals::StartDay] = employee[LDEmp::StartDay.name]; });
    }
    attempt([&] { totals[LDTotals::EndDay] = kLastMinute; });
    WriteFigures(attempt, jobs, totals);
    attempt([&] { totals.Update(); });
}

void ClearDay(const ResumeNext& attempt, dao::Recordset& employee)
{
    attempt([&] { employee.Edit(); });
    ForNoJob([&](const BoardField& field, const base::Value& none) {
        attempt([&] { employee[field.name] = none; });
    });
    attempt([&] { employee[LDEmp::StartDay.name] = base::Null{}; });
    attempt([&] { employee[LDEmp::EndDay.name] = base::Null{}; });
    attempt([&] { employee.Update(); });
}

void CloseForgottenDay(const ResumeNext& attempt, Shop& shop, base::Date today)
{
    dao::Recordset& employee = shop.state.employees;

    // A working date that cannot be read closes nobody's day.
    const auto forgotten = [&] { return IsFromAnotherDay(employee[LDEmp::WorkDate.name], today); };
    if (!attempt.Test(forgotten, IfItFails::SkipBranch)) return;

    const auto jobIsOpen = [&] { return employee[LDEmp::StartJob.name].Value().IsDate(); };
    bool recorded = true;
    if (attempt.Test(jobIsOpen, IfItFails::TakeBranch)) recorded = CloseJob(attempt, shop);
    WriteTotals(attempt, shop.state);
    // A job that could not be recorded is not thrown away: it stays open for the next start.
    if (recorded) ClearDay(attempt, employee);
}

}  // namespace

void CloseForgottenDays(const ResumeNext& attempt, Shop& shop)
{
    const base::Date today = base::DatePartOf(shop.platform.clock.Now());
    ForEachRecord(attempt, shop.state.employees, [&] { CloseForgottenDay(attempt, shop, today); });
}

}  // namespace lodrin
