// SPDX-License-Identifier: Apache-2.0
#include "data/DBOpen.h"

#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/NumberedError.h"
#include "data/CarryOver.h"
#include "data/Kelvaro.h"
#include "data/SyncEmployees.h"
#include "data/Tables.h"
#include "data/modBuildLD.h"
#include "floor/cboRO.h"
#include "floor/grdEmp.h"
#include "labor/GetHistory.h"

#include <string>

namespace lodrin {

namespace {

// Names that begin with "@" are hidden from the time clock.
constexpr const char* kEmployees = "SELECT * FROM LDEmp WHERE LEFT(Name,1) <> '@' ORDER BY Name";
constexpr const char* kHistory = "SELECT * FROM LDHistory";
// Kept, never run: the table has no LastName.
constexpr const char* kNeverRun = "SELECT * FROM LDEmp ORDER BY LastName";

bool IsOpen(const dao::Database& database)
{
    const auto answers = [&] { return !database.Name().empty(); };
    return ResumeNext::Silently().Test(answers, IfItFails::SkipBranch);
}

bool HasEmployeeTable(const ResumeNext& attempt, Shop& shop)
{
    std::string member;
    shop.values.LastErrNumber = 0;
    attempt([&] { member = shop.state.database.TableDef(LDEmp::table).Name(); });
    return shop.values.LastErrNumber == 0 && member == LDEmp::table;
}

// Whoever looks after the shop's files shall find it in the log.
void ReportDamage(const dao::Database& database)
{
    constexpr int kProblemInDatabase = 3428;
    if (database.HasSetJournalAside()) throw base::NumberedError(kProblemInDatabase);
}

// The program's own tables are made where they are missing. With no database open there is nothing
// to look at: the lists stay empty and File/Open stays in reach.
void CheckTables(const ResumeNext& attempt, Shop& shop)
{
    dao::Database& database = shop.state.database;
    if (!IsOpen(database) || HasEmployeeTable(attempt, shop)) return;
    attempt([&] { database.Close(); });
    attempt([&] { BuildLD(shop, shop.values.DataPath); });
    attempt([&] { database = OpenKelvaro(shop); });
}

void OpenRecordsets(const ResumeNext& attempt, MainWindowState& state)
{
    OpenRecords(attempt, state, state.database, state.employees, kEmployees);
    OpenRecords(attempt, state, state.database, state.history, kHistory);
}

// Everybody as his record has him, and none of them chosen.
void FillBoard(const ResumeNext& attempt, Shop& shop)
{
    MainWindowState& state = shop.state;
    platform::Grid& board = shop.window.grdEmp;
    if (attempt.Succeeds([&] { board.Bind(state.employees); })) {
        state.recordedOnBoard.clear();
        state.postedOnBoard.clear();
    }
    attempt([&] { board.SetRow(0); });
    attempt([&] { shop.window.lblEmpName.SetCaption(kNobodysName); });
}

}  // namespace

void DBOpen(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!DBOpen()");
    MainWindowState& state = shop.state;

    // The database, with the program's tables in it.
    attempt([&] { shop.window.lstHistory.Clear(); });
    attempt([&] { state.database = OpenKelvaro(shop); });
    if (IsOpen(state.database)) attempt([&] { ReportDamage(state.database); });
    CheckTables(attempt, shop);

    // Who works here, and what was done; days left open are closed before anybody sees the board.
    OpenRecordsets(attempt, state);
    CloseForgottenDays(attempt, shop);
    attempt([&] { SyncEmployees(shop); });

    // The window: board, repair orders, and nobody chosen. Who was added just now stands in his
    // place on the board, or is hidden like the others.
    if (state.employees.IsSet()) attempt([&] { state.employees.Requery(); });
    state.sqlText = kNeverRun;
    FillBoard(attempt, shop);
    attempt([&] { EmpView(shop); });
    attempt([&] { GetROList(shop); });
    state.currentEmployee = -1;
    attempt([&] { GetHistory(shop); });
    attempt([&] { shop.platform.pointer.Default(); });
}

}  // namespace lodrin
