// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SampleShopDays.h"

#include <gtest/gtest.h>

namespace tests {

namespace {

ExportedChange Change(const std::filesystem::path& before, const std::filesystem::path& after,
                      const char* table)
{
    return ChangeBetween(MdbExport(before, table), MdbExport(after, table));
}

// His row, and the row that synchronisation adds beside a hidden one.
void ExpectEveningBoard(const std::filesystem::path& before, const std::filesystem::path& after)
{
    const ExportedChange board = Change(before, after, "LDEmp");
    ASSERT_EQ(board.removed.size(), 1U);
    ASSERT_EQ(board.added.size(), 2U);
    ExpectChange(board.removed[0], RowWith(board.added, "EmpID", "9"),
                 {{"StartJob", "1899-12-30 20:00:00"},
                  {"WO#", "10125"},
                  {"WOID", "119"},
                  {"VehDesc", "1996 Honda CR-V EX AWD"},
                  {"Customer", "Harris, Mary"},
                  {"GLType", "ML"}});
    ExpectFields(RowWith(board.added, "EmpID", "28"),
                 {{"EmpEntry", "15"}, {"Name", "Carter, Edward"}, {"StartDay", kExportedNull}});
}

// Three closed jobs.
void ExpectEveningJobs(const std::filesystem::path& before, const std::filesystem::path& after)
{
    const ExportedChange history = Change(before, after, "LDHistory");
    EXPECT_TRUE(history.removed.empty());
    ASSERT_EQ(history.added.size(), 3U);
    ExpectFields(RowWith(history.added, "ID", "901"), {{"EmpID", "9"},
                                                       {"WorkDate", "2009-12-30 00:00:00"},
                                                       {"JobStart", "1899-12-30 08:23:00"},
                                                       {"JobEnd", "1899-12-30 17:30:00"},
                                                       {"WONumb", "10152"},
                                                       {"WOID", "158"},
                                                       {"GLType", "RL"},
                                                       {"Hrs", "9.12"},
                                                       {"VehDesc", "1994 Hyundai Sonata LX"},
                                                       {"Customer", "Ward, Debra"}});
    ExpectFields(RowWith(history.added, "ID", "902"), {{"EmpID", "9"},
                                                       {"WorkDate", "2009-12-30 00:00:00"},
                                                       {"JobStart", "1899-12-30 17:30:00"},
                                                       {"JobEnd", "1899-12-30 18:10:00"},
                                                       {"WONumb", "10125"},
                                                       {"WOID", "119"},
                                                       {"GLType", "BL"},
                                                       {"Hrs", "0.67"},
                                                       {"VehDesc", "1996 Honda CR-V EX AWD"},
                                                       {"Customer", "Harris, Mary"}});
    ExpectFields(RowWith(history.added, "ID", "903"), {{"EmpID", "9"},
                                                       {"WorkDate", "2009-12-30 00:00:00"},
                                                       {"JobStart", "1899-12-30 18:10:00"},
                                                       {"JobEnd", "1899-12-30 20:00:00"},
                                                       {"WONumb", "10011"},
                                                       {"WOID", "5"},
                                                       {"GLType", "RL"},
                                                       {"Hrs", "1.83"},
                                                       {"VehDesc", "1996 Hyundai Sonata LX"},
                                                       {"Customer", "Evans, Ryan"}});
}

// Three labor lines, each with the order it was worked on.
void ExpectEveningLabor(const std::filesystem::path& before, const std::filesystem::path& after)
{
    const ExportedChange labor = Change(before, after, "Labor");
    EXPECT_TRUE(labor.removed.empty());
    ASSERT_EQ(labor.added.size(), 3U);
    ExpectFields(RowWith(labor.added, "LaborID", "901"), {{"EmployeeID", "9"},
                                                          {"WONumber", "158"},
                                                          {"WorkOrder", "10152"},
                                                          {"EmpRate", "22.4300"},
                                                          {"LastName", "Jones"},
                                                          {"FirstName", "Anthony"},
                                                          {"GLType", "RL"},
                                                          {"FlagDate", "2009-12-30 00:00:00"},
                                                          {"TimeIN", "1899-12-30 08:23:00"},
                                                          {"TimeOut", "1899-12-30 17:30:00"},
                                                          {"HrsFlagged", "9.12"},
                                                          {"MiscDesc", "1994 Hyundai Sonata LX"},
                                                          {"Paid", "0"}});
    ExpectFields(RowWith(labor.added, "LaborID", "902"),
                 {{"WONumber", "119"}, {"WorkOrder", "10125"}, {"HrsFlagged", "0.67"}});
    ExpectFields(RowWith(labor.added, "LaborID", "903"),
                 {{"WONumber", "5"}, {"WorkOrder", "10011"}, {"HrsFlagged", "1.83"}});
}

// Two orders: stamps, and the hours of the jobs closed while they were chosen.
void ExpectEveningOrders(const std::filesystem::path& before, const std::filesystem::path& after)
{
    const ExportedChange orders = Change(before, after, "WorkOrder");
    ASSERT_EQ(orders.removed.size(), 2U);
    ASSERT_EQ(orders.added.size(), 2U);
    ExpectChange(RowWith(orders.removed, "WorkOrderNumber", "10125"),
                 RowWith(orders.added, "WorkOrderNumber", "10125"),
                 {{"BLTech", "9"},
                  {"DeptSequence", "70"},
                  {"AuditNotes", "\r\n[Jones, Anthony - 12/30/2009 - 05:30 PM] Department changed "
                                 "to Paint"},
                  {"Started", "2009-12-30 17:30:00"},
                  {"RefinishWorked", "10.95"},
                  {"RefinishCost", "245.6085"}});
    ExpectChange(RowWith(orders.removed, "WorkOrderNumber", "10011"),
                 RowWith(orders.added, "WorkOrderNumber", "10011"),
                 {{"RLTech", "9"}, {"BodyWorked", "18.15"}, {"BodyCost", "408.3281"}});
}

void ExpectMorningBoard(const std::filesystem::path& after)
{
    const std::vector<ExportedRow> board = MdbExport(after, "LDEmp");
    EXPECT_EQ(board.size(), 14U);
    ExpectFields(RowWith(board, "Name", "Gomez, Michelle"),
                 {{"EmpID", "9"},
                  {"StartDay", "1899-12-30 07:30:00"},
                  {"EndDay", kExportedNull},
                  {"WorkDate", "2009-12-30 00:00:00"},
                  {"StartJob", "1899-12-30 10:10:00"},
                  {"WO#", "10037"},
                  {"WOID", "33"},
                  {"VehDesc", "2001 Chevrolet Malibu LT"},
                  {"Customer", "Ward, David"},
                  {"GLType", "BL"}});
    ExpectFields(RowWith(board, "Name", "Taylor, Stephanie"),
                 {{"EmpID", "4"}, {"StartDay", kExportedNull}, {"WO#", "0"}});
}

void ExpectMorningJobs(const std::filesystem::path& after)
{
    const std::vector<ExportedRow> history = MdbExport(after, "LDHistory");
    ASSERT_EQ(history.size(), 2U);
    ExpectFields(RowWith(history, "ID", "1"), {{"EmpID", "9"},
                                               {"JobStart", "1899-12-30 07:30:00"},
                                               {"JobEnd", "1899-12-30 09:00:00"},
                                               {"WONumb", "10037"},
                                               {"WOID", "33"},
                                               {"GLType", "FL"},
                                               {"Hrs", "1.5"}});
    ExpectFields(RowWith(history, "ID", "2"), {{"JobStart", "1899-12-30 09:00:00"},
                                               {"JobEnd", "1899-12-30 10:10:00"},
                                               {"WONumb", "10112"},
                                               {"WOID", "117"},
                                               {"GLType", "DL"},
                                               {"Hrs", "1.17"}});
}

void ExpectMorningLabor(const std::filesystem::path& before, const std::filesystem::path& after)
{
    const ExportedChange labor = Change(before, after, "Labor");
    EXPECT_TRUE(labor.removed.empty());
    ASSERT_EQ(labor.added.size(), 2U);
    ExpectFields(RowWith(labor.added, "LaborID", "901"),
                 {{"EmployeeID", "9"}, {"WONumber", "33"}, {"HrsFlagged", "1.5"}});
}

void ExpectMorningOrders(const std::filesystem::path& before, const std::filesystem::path& after)
{
    const ExportedChange orders = Change(before, after, "WorkOrder");
    ASSERT_EQ(orders.added.size(), 2U);
    const ExportedRow& chevrolet = RowWith(orders.removed, "WorkOrderNumber", "10037");
    ExpectChange(chevrolet, RowWith(orders.added, "WorkOrderNumber", "10037"),
                 {{"BLTech", "9"},
                  {"DeptSequence", "70"},
                  {"AuditNotes", chevrolet.at("AuditNotes") +
                                     "\r\n[Gomez, Michelle - 12/30/2009 - 07:30 AM] Department "
                                     "changed to Paint"},
                  {"Started", "2009-12-30 07:30:00"},
                  {"OtherWorked", "1.17"},
                  {"OtherCost", "19.8549"}});
    const ExportedRow& truck = RowWith(orders.removed, "WorkOrderNumber", "10112");
    ExpectChange(truck, RowWith(orders.added, "WorkOrderNumber", "10112"),
                 {{"DeptSequence", "30"},
                  {"AuditNotes", truck.at("AuditNotes") +
                                     "\r\n[Gomez, Michelle - 12/30/2009 - 09:00 AM] Department "
                                     "changed to Body"},
                  {"FrameWorked", "22.37"},
                  {"FrameCost", "495.0300"}});
}

}  // namespace

void ExpectEvening(const std::filesystem::path& before, const std::filesystem::path& after)
{
    ExpectEveningBoard(before, after);
    ExpectEveningJobs(before, after);
    ExpectEveningLabor(before, after);
    ExpectEveningOrders(before, after);
    ExpectSameTables(before, after, {"LDEmp", "LDHistory", "Labor", "WorkOrder"});
}

void ExpectFirstMorning(const std::filesystem::path& before, const std::filesystem::path& after)
{
    ExpectMorningBoard(after);
    ExpectMorningJobs(after);
    ExpectMorningLabor(before, after);
    ExpectMorningOrders(before, after);
    EXPECT_TRUE(MdbExport(after, "LDTotals").empty());
    EXPECT_TRUE(MdbExport(after, "Status").empty());
    ExpectSameTables(before, after, {"Labor", "WorkOrder"});
}

}  // namespace tests
