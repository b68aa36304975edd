// SPDX-License-Identifier: Apache-2.0
#include "floor/FindRecord.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "data/Tables.h"

namespace lodrin {

namespace {

constexpr const char* kUnknownRepairOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

}  // namespace

bool Searches(const ResumeNext& attempt, dao::Recordset& records,
              const std::function<std::string()>& criteria)
{
    return attempt.Succeeds([&] { records.FindFirst(criteria()); });
}

bool Finds(const ResumeNext& attempt, dao::Recordset& records,
           const std::function<std::string()>& criteria)
{
    return Searches(attempt, records, criteria) &&
           attempt.Test([&] { return !records.NoMatch(); }, IfItFails::SkipBranch);
}

bool FindsEmployee(const ResumeNext& attempt, Shop& shop)
{
    return Finds(attempt, shop.state.employees,
                 [&] { return "EmpID = " + shop.window.grdEmp.Text(LDEmp::EmpID.column); });
}

bool FindsRepairOrder(const ResumeNext& attempt, Shop& shop,
                      const std::function<std::string()>& criteria)
{
    const bool found = Finds(attempt, shop.state.workOrders, criteria);
    if (!found) attempt([&] { Say(shop, kUnknownRepairOrder); });
    return found;
}

}  // namespace lodrin
