// SPDX-License-Identifier: Apache-2.0
// DailyTotals: the one row that says how long an employee's day was and what he did in it.
#pragma once

#include "jet/dao/Recordset.h"

#include <string>

namespace lodrin {

class ResumeNext;
struct Shop;

// Writes the totals of the employee on the board's row, whose day has just been ended.
//
// Rule: the jobs are counted for the date on his board row, the day he started; the totals are
//       stored under today's date. For a day that ends after midnight the two differ.
void DailyTotals(const ResumeNext& attempt, Shop& shop);

// What every closing of a day needs, whoever closes it. `employee` and `day` are texts as they
// stand in a query.
[[nodiscard]] std::string CountOfJobs(const std::string& employee, const std::string& day);
[[nodiscard]] std::string TotalsOfDay(const std::string& employee, const std::string& day);
// Makes the day's row the pending one, or a new row where it has none: then true. Requires:
// `totals` is open over TotalsOfDay.
bool EditDayOrAddNew(const ResumeNext& attempt, dao::Recordset& totals);
// Sets length of the day, number of jobs and their hours in the pending row. Requires: the row has
// its StartDay and EndDay; `jobs` is open over CountOfJobs.
void WriteFigures(const ResumeNext& attempt, dao::Recordset& jobs, dao::Recordset& totals);

}  // namespace lodrin
