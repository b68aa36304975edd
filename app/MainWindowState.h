// SPDX-License-Identifier: Apache-2.0
// MainWindowState: the main window's database, record sets and selection, shared by its procedures.
#pragma once

#include "jet/dao/Database.h"
#include "jet/dao/Recordset.h"

#include <cstdint>
#include <set>
#include <string>

namespace lodrin {

struct MainWindowState {
    dao::Database database;
    dao::Database statusDatabase;  // opened once more for rsStatus
    dao::Recordset employees;      // LDEmp without the names that begin with "@", by name
    dao::Recordset workOrders;     // open repair orders
    dao::Recordset history;        // the current employee's jobs of today
    dao::Recordset rsStatus;       // labor type descriptions
    dao::Recordset profile;        // of the last posting
    dao::Recordset labor;          // of the last posting
    std::string sqlText;           // text of the query a procedure opens next

    std::int32_t currentEmployee = -1;  // EmpID of the chosen board row, -1 when none is
    bool automaticEndOfDay = false;
    // Jobs that were closed and may stand on the board still: those with a history row, and those
    // whose labor was posted.
    std::set<std::string> recordedOnBoard, postedOnBoard;
    bool firstActivation = false;

    // Filled by the labor type dialog.
    std::string GLCode;  // empty when the dialog was left without a choice
    std::string GLDesc;
    std::string Department;
    std::int16_t Sequence = 0;
};

}  // namespace lodrin
