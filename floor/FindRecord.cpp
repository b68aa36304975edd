// SPDX-License-Identifier: Apache-2.0
#include "floor/FindRecord.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"

namespace lodrin {

namespace {

constexpr const char* kUnknownRepairOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

}  // namespace

bool Finds(const ResumeNext& attempt, dao::Recordset& records,
           const std::function<std::string()>& criteria)
{
    const auto found = [&] {
        records.FindFirst(criteria());
        return !records.NoMatch();
    };
    return attempt.Test(found, IfItFails::SkipBranch);
}

bool FindsRepairOrder(const ResumeNext& attempt, Shop& shop,
                      const std::function<std::string()>& criteria)
{
    const bool found = Finds(attempt, shop.state.workOrders, criteria);
    if (!found) attempt([&] { Say(shop, kUnknownRepairOrder); });
    return found;
}

}  // namespace lodrin
