// SPDX-License-Identifier: Apache-2.0
#include "labor/WriteLabor.h"

#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "labor/EditRepairOrder.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace lodrin {

namespace {

// Where the hours and the cost of a labor type are added up on the repair order.
struct Category {
    std::string_view code, hours, cost;
};
constexpr std::array<Category, 6> kCategories{{
    {"BL", WorkOrder::BodyWorked, WorkOrder::BodyCost},
    {"RL", WorkOrder::RefinishWorked, WorkOrder::RefinishCost},
    {"FL", WorkOrder::FrameWorked, WorkOrder::FrameCost},
    {"ML", WorkOrder::MechWorked, WorkOrder::MechCost},
    {"SL", WorkOrder::StructWorked, WorkOrder::StructCost},
    {"GL", WorkOrder::GlassWorked, WorkOrder::GlassCost},
}};
constexpr Category kOther{"", WorkOrder::OtherWorked, WorkOrder::OtherCost};

// Upper and lower case are distinct: "bl" is other labor.
const Category& CategoryOf(const std::string& code)
{
    const auto* found = std::find_if(kCategories.begin(), kCategories.end(),
                                     [&](const Category& each) { return each.code == code; });
    return found != kCategories.end() ? *found : kOther;
}

void AddLaborLine(const ResumeNext& attempt, dao::Recordset& labor, dao::Recordset& history,
                  dao::Recordset& profile)
{
    attempt([&] { labor.AddNew(); });
    attempt([&] { labor[Labor::EmployeeID] = history[LDHistory::EmpID]; });
    // Crossed on purpose: WONumber is the order's entry number, WorkOrder is its number.
    attempt([&] { labor[Labor::WONumber] = history[LDHistory::WOID]; });
    attempt([&] { labor[Labor::EmpRate] = profile[Profile::EmpRate]; });
    attempt([&] { labor[Labor::LastName] = profile[Profile::LastName]; });
    attempt([&] { labor[Labor::FirstName] = profile[Profile::FirstName]; });
    attempt([&] { labor[Labor::GLType] = history[LDHistory::GLType]; });
    attempt([&] { labor[Labor::FlagDate] = history[LDHistory::WorkDate]; });
    attempt([&] { labor[Labor::TimeIN] = history[LDHistory::JobStart]; });
    attempt([&] { labor[Labor::TimeOut] = history[LDHistory::JobEnd]; });
    attempt([&] { labor[Labor::HrsFlagged] = history[LDHistory::Hrs]; });
    attempt([&] { labor[Labor::WorkOrder] = history[LDHistory::WONumb]; });
    attempt([&] { labor[Labor::MiscDesc] = history[LDHistory::VehDesc]; });
    attempt([&] { labor.Update(); });
}

// Null plus a number is null: a total that the management system left empty stays empty.
void AddToTotals(const ResumeNext& attempt, dao::Recordset& repairOrder, dao::Recordset& history,
                 dao::Recordset& profile)
{
    attempt([&] { EditRepairOrder(repairOrder); });
    std::string code;
    attempt([&] { code = base::TextOf(history[LDHistory::GLType]); });
    const Category& category = CategoryOf(code);
    attempt([&] {
        repairOrder[category.hours] =
            base::Plus(repairOrder[category.hours], history[LDHistory::Hrs]);
    });
    attempt([&] {
        repairOrder[category.cost] =
            base::Plus(repairOrder[category.cost],
                       base::Times(profile[Profile::EmpRate], history[LDHistory::Hrs]));
    });
    attempt([&] { repairOrder.Update(); });
}

}  // namespace

void WriteLabor(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!WriteLabor()");
    MainWindowState& state = shop.state;
    dao::Recordset& history = state.history;
    dao::Recordset& profile = state.profile;
    dao::Recordset& labor = state.labor;

    // The profile of the employee, with his rate. The one of the posting before is let go first, so
    // that a failing open never posts under another man's name.
    attempt([&] { profile = dao::Recordset(); });
    OpenRecords(attempt, state, state.database, profile, [&] {
        return "SELECT * FROM Profile WHERE ProfileNumber = " +
               base::TextOf(history[LDHistory::EmpID]);
    });

    // Without a profile nothing is posted; the history row stays.
    if (attempt.Test([&] { return profile.RecordCount() <= 0; }, IfItFails::TakeBranch)) return;

    // A labor line in the management system.
    attempt([&] { labor = state.database.OpenRecordset(Labor::table); });
    AddLaborLine(attempt, labor, history, profile);

    // Hours and cost on the repair order at hand, in the category of the labor type.
    AddToTotals(attempt, state.workOrders, history, profile);
}

}  // namespace lodrin
