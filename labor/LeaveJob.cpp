// SPDX-License-Identifier: Apache-2.0
#include "labor/LeaveJob.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "app/modRecLib.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "floor/FindRecord.h"

namespace lodrin {

std::int32_t OrderOfJob(Shop& shop)
{
    return base::ValLong(fnCN(shop, shop.window.grdEmp.Value(LDEmp::WOID.column), 0));
}

bool TellsProgress(const ResumeNext& attempt, Shop& shop)
{
    frmProgress& progress = shop.forms.progress;
    progress.lngWOID = 0;  // no order, should the board not tell it
    attempt([&] { progress.lngWOID = OrderOfJob(shop); });
    attempt([&] { ShowProgress(shop); });
    return !progress.isCancelled;
}

bool FindsOrderOfJob(const ResumeNext& attempt, Shop& shop)
{
    return FindsRepairOrder(attempt, shop,
                            [&] { return "EntryNumber = " + base::TextOf(OrderOfJob(shop)); });
}

}  // namespace lodrin
