// SPDX-License-Identifier: Apache-2.0
#include "floor/cboRO.h"

#include "app/ForEachRecord.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "base/Text.h"
#include "data/Tables.h"
#include "floor/StartJob.h"

#include <string>

namespace lodrin {

namespace {

constexpr const char* kOpenRepairOrders =
    "SELECT * FROM "
    "WorkOrder WHERE WOType In('WorkOrder', 'Estimate') AND Archived = FALSE "
    "ORDER BY WorkOrderNumber";
// Between number and description; the number is cut out again in front of it.
constexpr const char* kSeparator = "  ";

// Lists the repair order at hand when it has a number.
void ListRepairOrder(const ResumeNext& attempt, dao::Recordset& repairOrder,
                     platform::ComboBox& list)
{
    const auto numbered = [&] { return base::Val(repairOrder[WorkOrder::WorkOrderNumber]) > 0; };
    if (!attempt.Test(numbered, IfItFails::TakeBranch)) return;
    attempt([&] {
        list.AddItem(base::TextOf(repairOrder[WorkOrder::WorkOrderNumber]) + kSeparator +
                     base::TextOf(repairOrder[WorkOrder::ServiceItemDescriptionL1]));
    });
}

// Leaves the bare number in the box. Errors: 5 for text without the separator.
void CutNumber(platform::ComboBox& box)
{
    const std::string text = box.Text();
    box.SetText(base::Left(text, base::InStr(text, kSeparator) - 1));
}

}  // namespace

void GetROList(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!GetROList()");
    dao::Recordset& repairOrder = shop.state.workOrders;
    platform::ComboBox& list = shop.window.cboRO;

    // The open repair orders, by number.
    OpenRecords(attempt, shop.state, shop.state.database, repairOrder, kOpenRepairOrders);

    // Without any the list stays as it was.
    const auto none = [&] { return repairOrder.RecordCount() <= 0; };
    if (attempt.Test(none, IfItFails::TakeBranch)) return;

    // Otherwise it is filled anew.
    const platform::ChangesHeld held(list);
    attempt([&] { list.Clear(); });
    attempt([&] { repairOrder.MoveFirst(); });
    ForEachRecord(attempt, repairOrder, [&] { ListRepairOrder(attempt, repairOrder, list); });
}

void cboRO_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!cboRO_Click()");
    platform::ComboBox& box = shop.window.cboRO;
    if (box.Text().empty()) return;

    // The bare number stays in the box.
    attempt([&] { CutNumber(box); });

    // The job starts on it; a text that is no number starts none.
    std::int32_t number = 0;
    attempt([&] { number = base::ToLong(box.Text()); });
    attempt([&] { StartJob(shop, number); });
}

void cboRO_KeyUp(Shop& shop, int keyCode)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!cboRO_KeyUp()");
    platform::ComboBox& box = shop.window.cboRO;
    if (keyCode != kEnterKey || base::Trim(box.Text()).empty()) return;

    // A number typed by hand has no separator: that is reported, and the text stays.
    attempt([&] { CutNumber(box); });

    std::int32_t number = 0;
    attempt([&] { number = base::ValLong(box.Text()); });
    attempt([&] { StartJob(shop, number); });
}

}  // namespace lodrin
