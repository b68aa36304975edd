// SPDX-License-Identifier: Apache-2.0
#include "floor/StartJob.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/Format.h"
#include "data/Tables.h"
#include "floor/EmployeeRow.h"
#include "floor/FindRecord.h"
#include "floor/StoreAndStay.h"
#include "floor/VerifyPIN.h"
#include "labor/ClockTime.h"
#include "labor/EditRepairOrder.h"
#include "labor/JobOnBoard.h"
#include "labor/WriteHistory.h"

#include <functional>
#include <string>
#include <string_view>

namespace lodrin {

namespace {

constexpr const char* kInvalidPIN = "Invalid PIN entered";
constexpr const char* kInvalidPINTitle = "Invalid PIN";
constexpr const char* kNoteTime = "mm/dd/yyyy - hh:mm AMPM";
constexpr const char* kBodyLabor = "BL";
constexpr const char* kRefinishLabor = "RL";

using IfItFails::SkipBranch;
using IfItFails::TakeBranch;

// Empties the end of the day of an employee who had gone home.
void ReopenDay(const ResumeNext& attempt, platform::Grid& board)
{
    const auto ended = [&] { return board.Value(LDEmp::EndDay.column).IsDate(); };
    if (!attempt.Test(ended, TakeBranch)) return;
    attempt([&] { board.allowEdit = true; });
    attempt([&] { board.SetValue(LDEmp::EndDay.column, ""); });
    attempt([&] { board.allowEdit = false; });
}

// An employee whose day is already started keeps his start.
void StartDay(const ResumeNext& attempt, EmployeeRow& row, dao::Recordset& employee,
              const platform::Grid& board, base::Date now)
{
    const auto notStarted = [&] {
        const bool hasWorkDate = board.Value(LDEmp::WorkDate.column).IsDate();
        const bool hasStartDay = employee[LDEmp::StartDay.name].Value().IsDate();
        return !hasWorkDate || !hasStartDay;
    };
    if (!attempt.Test(notStarted, TakeBranch)) return;
    row.Write(LDEmp::StartDay, [&] { return base::Format(now, kClockTime); });
    row.Write(LDEmp::WorkDate, [&] { return base::Format(now, kClockDay); });
}

// Changes one field of the repair order and stays on it.
void Stamp(const ResumeNext& attempt, dao::Recordset& repairOrder, std::string_view field,
           const std::function<base::Value()>& value)
{
    attempt([&] { EditRepairOrder(repairOrder); });
    attempt([&] { repairOrder[field] = value(); });
    StoreAndStay(attempt, repairOrder);
}

// The first technician of body or refinish labor stays the technician of the order.
void StampTechnician(const ResumeNext& attempt, dao::Recordset& repairOrder,
                     const platform::Grid& board, const std::string& code)
{
    if (code != kBodyLabor && code != kRefinishLabor) return;
    const std::string_view technician = code == kBodyLabor ? WorkOrder::BLTech : WorkOrder::RLTech;
    const auto nobodyYet = [&] { return base::Val(repairOrder[technician]) == 0; };
    if (attempt.Test(nobodyYet, TakeBranch))
        Stamp(attempt, repairOrder, technician, [&] { return board.Value(LDEmp::EmpID.column); });
}

// A change of department leaves a line in the order's notes.
void MoveToDepartment(const ResumeNext& attempt, dao::Recordset& repairOrder,
                      const platform::Grid& board, const MainWindowState& state, base::Date now)
{
    const auto changes = [&] {
        return base::Differs(repairOrder[WorkOrder::DeptSequence], state.Sequence);
    };
    const auto note = [&] {
        return base::TextOf(repairOrder[WorkOrder::AuditNotes]) + "\r\n[" +
               board.Text(LDEmp::Name.column) + " - " + base::Format(now, kNoteTime) +
               "] Department changed to " + state.Department;
    };
    if (attempt.Test(changes, TakeBranch)) Stamp(attempt, repairOrder, WorkOrder::AuditNotes, note);
    Stamp(attempt, repairOrder, WorkOrder::DeptSequence, [&] { return state.Sequence; });
}

// The first job on the order sets the time, later ones leave it.
void StampOnce(const ResumeNext& attempt, dao::Recordset& repairOrder, std::string_view field,
               base::Date now)
{
    const auto missing = [&] { return !repairOrder[field].Value().IsDate(); };
    if (attempt.Test(missing, TakeBranch)) Stamp(attempt, repairOrder, field, [&] { return now; });
}

// Whatever was closed on the board before: what stands there now has just begun.
void ForgetClosing(MainWindowState& state, const platform::Grid& board)
{
    const std::string job = JobOnBoard(board);
    state.recordedOnBoard.erase(job);
    state.postedOnBoard.erase(job);
}

// The new job, on his row and on the repair order.
void OpenJob(const ResumeNext& attempt, Shop& shop)
{
    dao::Recordset& employee = shop.state.employees;
    dao::Recordset& repairOrder = shop.state.workOrders;
    platform::Grid& board = shop.window.grdEmp;
    const base::Date now = shop.platform.clock.Now();
    EmployeeRow row(attempt, employee, board);
    row.Edit();
    StartDay(attempt, row, employee, board, now);
    row.Write(LDEmp::VehDesc, repairOrder[WorkOrder::ServiceItemDescriptionL1]);
    row.Write(LDEmp::Customer, repairOrder[WorkOrder::ProfileDescriptionL1]);
    row.Write(LDEmp::WONumber, repairOrder[WorkOrder::WorkOrderNumber]);
    row.Write(LDEmp::WOID, repairOrder[WorkOrder::EntryNumber]);
    row.Write(LDEmp::GLType, [&] { return shop.state.GLCode; });
    StampTechnician(attempt, repairOrder, board, shop.state.GLCode);
    MoveToDepartment(attempt, repairOrder, board, shop.state, now);
    StampOnce(attempt, repairOrder, WorkOrder::Started, now);
    StampOnce(attempt, repairOrder, WorkOrder::Arrived, now);
    row.Write(LDEmp::StartJob, [&] { return base::Format(now, kClockTime); });
    if (row.Save() != Stored::No) attempt([&] { ForgetClosing(shop.state, board); });
}

}  // namespace

void StartJob(Shop& shop, std::int32_t roNumber)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!StartJob()");
    platform::Grid& board = shop.window.grdEmp;

    // There is a job to start, and the employee may start it.
    if (roNumber == 0) return;
    if (!attempt.Test([&] { return VerifyPIN(shop); }, SkipBranch))
        return attempt([&] { Say(shop, kInvalidPIN, kInvalidPINTitle); });

    // A day that he had ended is open again.
    ReopenDay(attempt, board);
    attempt([&] { DoEvents(shop); });

    // He picks labor type and department; leaving the dialog starts nothing.
    attempt([&] { shop.state.GLCode.clear(); });
    attempt([&] { shop.state.GLDesc.clear(); });
    attempt([&] { ShowGLSelect(shop); });
    if (shop.state.GLCode.empty()) return;

    // The repair order becomes the current record and stays so to the end.
    if (!FindsRepairOrder(attempt, shop,
                          [&] { return "WorkOrderNumber = " + base::TextOf(roNumber); }))
        return;

    // The job he has open is closed; its labor goes to the newly chosen repair order.
    if (attempt.Test([&] { return !board.Text(LDEmp::Customer.column).empty(); }, TakeBranch))
        attempt([&] { WriteHistory(shop); });

    // His own record.
    if (!FindsEmployee(attempt, shop)) return;

    OpenJob(attempt, shop);
}

}  // namespace lodrin
