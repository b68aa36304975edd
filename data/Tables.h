// SPDX-License-Identifier: Apache-2.0
// Tables: the names of the tables and fields the program works with, each once.
#pragma once

#include <string_view>

namespace lodrin {

// A field of LDEmp: its name and its column on the board, which is its place in the table.
struct BoardField {
    std::string_view name;
    int column;
};

// The employee board: one row per employee.
struct LDEmp {
    static constexpr std::string_view table = "LDEmp";
    static constexpr BoardField EmpEntry{"EmpEntry", 1};
    static constexpr BoardField EmpID{"EmpID", 2};
    static constexpr BoardField Name{"Name", 3};
    static constexpr BoardField StartDay{"StartDay", 4};
    static constexpr BoardField EndDay{"EndDay", 5};
    static constexpr BoardField StartJob{"StartJob", 6};
    static constexpr BoardField WONumber{"WO#", 7};
    static constexpr BoardField WOID{"WOID", 8};
    static constexpr BoardField VehDesc{"VehDesc", 9};
    static constexpr BoardField Customer{"Customer", 10};
    static constexpr BoardField WorkDate{"WorkDate", 11};
    static constexpr BoardField GLType{"GLType", 12};
};

// Totals per employee and working day.
struct LDTotals {
    static constexpr std::string_view table = "LDTotals";
    static constexpr std::string_view ID = "ID", EmpID = "EmpID", WorkDate = "WorkDate",
                                      StartDay = "StartDay", EndDay = "EndDay", TotHrs = "TotHrs",
                                      JobCount = "JobCount", JobHrs = "JobHrs";
};

// Closed jobs.
struct LDHistory {
    static constexpr std::string_view table = "LDHistory";
    static constexpr std::string_view ID = "ID", EmpID = "EmpID", WorkDate = "WorkDate",
                                      JobStart = "JobStart", JobEnd = "JobEnd", WONumb = "WONumb",
                                      WOID = "WOID", GLType = "GLType", Hrs = "Hrs",
                                      VehDesc = "VehDesc", Customer = "Customer";
    // Places in the table, which are the columns of a grid.
    struct Column {
        static constexpr int JobStart = 4, JobEnd = 5, WONumb = 6, GLType = 8, Hrs = 9,
                             VehDesc = 10;
    };
};

// Labor type descriptions.
struct Status {
    static constexpr std::string_view table = "Status";
    static constexpr std::string_view ID = "ID", AcctType = "AcctType", GLType = "GLType",
                                      GLDesc = "GLDesc", Description = "Description";
    struct Column {
        static constexpr int GLType = 3, GLDesc = 4, Description = 5;
    };
    // The query for the program's own rows.
    static constexpr std::string_view descriptions =
        "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType";
};

// The management system's tables, as far as the program uses them.
struct Profile {
    static constexpr std::string_view ProfileNumber = "ProfileNumber", LastName = "LastName",
                                      FirstName = "FirstName", PIN = "PIN", EmpRate = "EmpRate";
};

struct WorkOrder {
    static constexpr std::string_view WorkOrderNumber = "WorkOrderNumber",
                                      EntryNumber = "EntryNumber",
                                      ServiceItemDescriptionL1 = "ServiceItemDescriptionL1",
                                      ProfileDescriptionL1 = "ProfileDescriptionL1",
                                      BLTech = "BLTech", RLTech = "RLTech",
                                      DeptSequence = "DeptSequence", AuditNotes = "AuditNotes",
                                      Started = "Started", Arrived = "Arrived",
                                      Progress = "Progress";
    // Hours worked and labor cost, a pair per labor category.
    static constexpr std::string_view BodyWorked = "BodyWorked", BodyCost = "BodyCost",
                                      RefinishWorked = "RefinishWorked",
                                      RefinishCost = "RefinishCost", FrameWorked = "FrameWorked",
                                      FrameCost = "FrameCost", MechWorked = "MechWorked",
                                      MechCost = "MechCost", StructWorked = "StructWorked",
                                      StructCost = "StructCost", GlassWorked = "GlassWorked",
                                      GlassCost = "GlassCost", OtherWorked = "OtherWorked",
                                      OtherCost = "OtherCost";
};

struct Labor {
    static constexpr std::string_view table = "Labor";
    static constexpr std::string_view EmployeeID = "EmployeeID", WONumber = "WONumber",
                                      EmpRate = "EmpRate", LastName = "LastName",
                                      FirstName = "FirstName", GLType = "GLType",
                                      FlagDate = "FlagDate", TimeIN = "TimeIN", TimeOut = "TimeOut",
                                      HrsFlagged = "HrsFlagged", WorkOrder = "WorkOrder",
                                      MiscDesc = "MiscDesc";
};

struct GenLedger {
    static constexpr std::string_view GLCode = "GLCode", GLDescription = "GLDescription";
    // The query for the accounts that labor is booked on.
    static constexpr std::string_view laborAccounts =
        "SELECT * FROM GenLedger WHERE GLLaborFlag = True ORDER BY GLCode";
};

struct Departments {
    static constexpr std::string_view Description = "Description", Sequence = "Sequence";
};

struct AutoLook {
    static constexpr std::string_view Description = "Description";
};

}  // namespace lodrin
