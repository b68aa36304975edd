// SPDX-License-Identifier: Apache-2.0
// ThreeDaysTest: three days of a technician in two real shops, looked at by an independent reader:
// one day ended by himself, one forgotten, one ended by the clock.
#include "base/Calendar.h"
#include "base/Format.h"
#include "tests/support/ExpectExport.h"
#include "tests/support/SampleShopDays.h"
#include "tests/support/SampleShopFixture.h"
#include "tests/support/StartTexts.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace tests;

// Who works where. The three orders are open; A, B and C in the script below.
struct Scene {
    const char* shop;
    bool isNew;  // has no labor type descriptions, and had no clock before
    const char* name;
    const char* employee;
    const char* pin;
    double rate;
    std::array<int, 3> orders;
};

enum Order { A, B, C };

// A job as it has to be recorded, and the order that its hours are added to.
struct Job {
    const char* day;
    const char* start;
    const char* end;
    Order order;
    const char* code;
    const char* department;
    const char* sequence;
    double hours;
    int postedTo;  // -1 when nobody gets them
};

constexpr const char* kMonday = "2010-01-04";
constexpr const char* kTuesday = "2010-01-05";
constexpr const char* kWednesday = "2010-01-06";
constexpr int kNobody = -1;

// A job that gives way to another is posted to the order of the other; the one of a forgotten day
// to none, because the orders are not yet listed when the program starts.
constexpr std::array<Job, 9> kJobs{{
    {kMonday, "07:00", "08:10", A, "BL", "Body", "30", 1.17, B},
    {kMonday, "08:10", "09:15", B, "RL", "Paint", "70", 1.08, A},
    {kMonday, "09:15", "10:00", A, "ML", "Paint", "70", 0.75, C},
    {kMonday, "10:00", "11:20", C, "BL", "Body", "30", 1.33, B},
    {kMonday, "11:20", "12:00", B, "FL", "Frame", "40", 0.67, A},
    {kMonday, "12:00", "12:30", A, "GL", "Body", "30", 0.5, A},
    {kMonday, "13:00", "15:30", C, "SL", "Paint", "70", 2.5, C},
    {kTuesday, "07:30", "23:59", A, "BL", "Body", "30", 16.48, kNobody},
    {kWednesday, "08:00", "23:59", B, "RL", "Paint", "70", 15.98, B},
}};

std::string Clock(const char* time)
{
    return std::string("1899-12-30 ") + time + ":00";
}

std::string Day(const char* day)
{
    return std::string(day) + " 00:00:00";
}

std::string Category(const std::string& code)
{
    if (code == "BL") return "Body";
    if (code == "RL") return "Refinish";
    if (code == "FL") return "Frame";
    if (code == "ML") return "Mech";
    if (code == "SL") return "Struct";
    return "Glass";
}

// Nothing plus a number is nothing.
void Add(std::string& field, double amount)
{
    if (field != kExportedNull)
        field = std::to_string(std::strtod(field.c_str(), nullptr) + amount);
}

// The rows that a table has more than before, in the order in which they were numbered; none is
// gone or changed.
std::vector<ExportedRow> Added(const std::filesystem::path& before,
                               const std::filesystem::path& after, const std::string& table,
                               const std::string& id)
{
    ExportedChange change = ChangeBetween(MdbExport(before, table), MdbExport(after, table));
    EXPECT_TRUE(change.removed.empty()) << table;
    std::sort(change.added.begin(), change.added.end(),
              [&](const ExportedRow& left, const ExportedRow& right) {
                  return std::atoi(left.at(id).c_str()) < std::atoi(right.at(id).c_str());
              });
    return change.added;
}

class ThreeDaysTest : public SampleShopFixture, public ::testing::WithParamInterface<Scene> {
protected:
    const Scene& scene = GetParam();

    void Start(int day, const char* synchronised)
    {
        const base::Date morning = base::DateFrom({2010, 1, day, 6, 30, 0});
        if (scene.isNew)
            StartProgram(morning, {synchronised, kNoDescriptions});
        else
            StartProgram(morning, {synchronised});
        world->Select(scene.name);
    }
    // He starts the job at its time.
    void Works(const Job& job)
    {
        world->At(job.start).Types(scene.pin).Picks(job.code, job.department);
        world->Starts(scene.orders.at(job.order));
    }
    ExportedRow OrderBefore(Order order) const
    {
        return RowWith(orders_, "WorkOrderNumber", std::to_string(scene.orders.at(order)));
    }
    // What the order has to look like after the three days.
    ExportedRow OrderAfter(Order order) const;
    void ExpectRecorded(const ExportedRow& history, const ExportedRow& labor, const Job& job) const;
    void ExpectTotals(const ExportedRow& row, const ExportedRow& expected) const
    {
        ExpectFields(row, {{"EmpID", scene.employee}});
        ExpectFields(row, expected);
    }

    void Monday();
    void Tuesday();
    void Wednesday();
    void ExpectMondaysTotals();
    void ExpectBoard();
    void ExpectJobs();
    void ExpectTotalsOfAllDays();
    void ExpectOrders();

    std::filesystem::path before_;
    std::vector<ExportedRow> orders_;
};

ExportedRow ThreeDaysTest::OrderAfter(Order order) const
{
    ExportedRow row = OrderBefore(order);
    for (const Job& job : kJobs) {
        if (job.postedTo == order) {
            Add(row.at(Category(job.code) + "Worked"), job.hours);
            Add(row.at(Category(job.code) + "Cost"), job.hours * scene.rate);
        }
        if (job.order != order) continue;
        const std::string began = std::string(job.day) + " " + job.start + ":00";
        for (const char* stamp : {"Started", "Arrived"})
            if (row.at(stamp) == kExportedNull) row.at(stamp) = began;
        const std::string technician = std::string(job.code) + "Tech";
        if (row.count(technician) > 0 && std::atoi(row.at(technician).c_str()) == 0)
            row.at(technician) = scene.employee;
        if (row.at("DeptSequence") == job.sequence) continue;
        row.at("DeptSequence") = job.sequence;
        if (row.at("AuditNotes") == kExportedNull) row.at("AuditNotes").clear();
        const std::string day = std::string("01/") + (job.day + 8) + "/2010";
        const std::string time = base::Format(base::ReadDate(job.start).value(), "hh:mm AM/PM");
        row.at("AuditNotes") += "\r\n[" + std::string(scene.name) + " - " + day + " - " + time +
                                "] Department changed to " + job.department;
    }
    if (order == A) row.at("Progress") = "In body";
    if (order == C) row.at("Progress") = "Frame set-up";
    return row;
}

void ThreeDaysTest::ExpectRecorded(const ExportedRow& history, const ExportedRow& labor,
                                   const Job& job) const
{
    SCOPED_TRACE(std::string(job.day) + " " + job.start);
    const ExportedRow order = OrderBefore(job.order);
    const std::string hours = std::to_string(job.hours);
    ExpectFields(history, {{"EmpID", scene.employee},
                           {"WorkDate", Day(job.day)},
                           {"JobStart", Clock(job.start)},
                           {"JobEnd", Clock(job.end)},
                           {"WONumb", order.at("WorkOrderNumber")},
                           {"WOID", order.at("EntryNumber")},
                           {"GLType", job.code},
                           {"Hrs", hours},
                           {"VehDesc", order.at("ServiceItemDescriptionL1")},
                           {"Customer", order.at("ProfileDescriptionL1")}});
    const std::string name = scene.name;
    // Every field of the line, but its number.
    ExpectChange({{"LaborID", labor.at("LaborID")}}, labor,
                 {{"EmployeeID", scene.employee},
                  {"WONumber", order.at("EntryNumber")},
                  {"EmpRate", std::to_string(scene.rate)},
                  {"LastName", name.substr(0, name.find(','))},
                  {"FirstName", name.substr(name.find(' ') + 1)},
                  {"GLType", job.code},
                  {"FlagDate", Day(job.day)},
                  {"TimeIN", Clock(job.start)},
                  {"TimeOut", Clock(job.end)},
                  {"HrsFlagged", hours},
                  {"WorkOrder", order.at("WorkOrderNumber")},
                  {"MiscDesc", order.at("ServiceItemDescriptionL1")},
                  {"Paid", "0"},
                  {"PayBatch", "0"}});
}

// Monday: five changes, a break, one job more, and home. What the opening itself does to the
// shop is not looked at here.
void ThreeDaysTest::Monday()
{
    Start(4, kEmployeesAdded);
    const std::vector<std::string> opening = world->Reports();
    before_ = folder.Path() / "before.mdb";
    std::filesystem::copy_file(file, before_);
    orders_ = MdbExport(before_, "WorkOrder");
    for (std::size_t job = 0; job < 6; ++job)
        Works(kJobs.at(job));
    world->At("12:30 PM").Types(scene.pin).SetsProgress("In body").GoesOnBreak();
    Works(kJobs.at(6));
    world->At("03:30 PM").IsSure().Types(scene.pin).SetsProgress("Frame set-up").EndsDay();
    ExpectTalkIsOver();
    EXPECT_EQ(world->Reports(), opening);
}

// What he sees of the day he ended himself.
void ThreeDaysTest::ExpectMondaysTotals()
{
    const std::vector<ExportedRow> totals = Added(before_, file, "LDTotals", "ID");
    ASSERT_EQ(totals.size(), 1U);
    ExpectTotals(totals[0], {{"WorkDate", Day(kMonday)},
                             {"StartDay", Clock("07:00")},
                             {"EndDay", Clock("15:30")},
                             {"TotHrs", "8.5"},
                             {"JobCount", "7"},
                             {"JobHrs", "8"}});
}

// Tuesday: one job, and nobody ends the day.
void ThreeDaysTest::Tuesday()
{
    Start(5, kNothingToSynchronise);
    Works(kJobs.at(7));
    ExpectTalkIsOver();
}

// Wednesday: the start closes Tuesday; the clock ends the day.
void ThreeDaysTest::Wednesday()
{
    Start(6, kNothingToSynchronise);
    Works(kJobs.at(8));
    world->At("11:59:30 PM").Ticks();
    ExpectTalkIsOver();
}

// The board: his row alone.
void ThreeDaysTest::ExpectBoard()
{
    const ExportedChange board =
        ChangeBetween(MdbExport(before_, "LDEmp"), MdbExport(file, "LDEmp"));
    ASSERT_EQ(board.removed.size(), 1U);
    ASSERT_EQ(board.added.size(), 1U);
    ExportedRow row = board.removed[0];
    row.at("StartDay") = Clock("08:00");
    row.at("EndDay") = Clock("23:59");
    row.at("WorkDate") = Day(kWednesday);
    for (const char* field : {"StartJob", "WO#", "WOID"})
        row.at(field) = kExportedNull;
    // Empty text, which this reader does not tell from null.
    for (const char* field : {"VehDesc", "Customer", "GLType"}) {
        row.at(field) = kExportedNull;
        EXPECT_EQ(world->EmployeeRecord(scene.name)[field], "") << field;
    }
    EXPECT_EQ(row.at("Name"), scene.name);
    EXPECT_EQ(board.added[0], row);
}

// Nine jobs, nine labor lines.
void ThreeDaysTest::ExpectJobs()
{
    const std::vector<ExportedRow> history = Added(before_, file, "LDHistory", "ID");
    const std::vector<ExportedRow> labor = Added(before_, file, "Labor", "LaborID");
    ASSERT_EQ(history.size(), kJobs.size());
    ASSERT_EQ(labor.size(), kJobs.size());
    for (const Job& job : kJobs) {
        const std::size_t place = static_cast<std::size_t>(&job - kJobs.data());
        ExpectRecorded(history[place], labor[place], job);
    }
}

// Three days. The start of the next day takes a day for forgotten also when it was ended.
void ThreeDaysTest::ExpectTotalsOfAllDays()
{
    const std::vector<ExportedRow> totals = Added(before_, file, "LDTotals", "ID");
    ASSERT_EQ(totals.size(), 3U);
    ExpectTotals(totals[0], {{"WorkDate", Day(kMonday)},
                             {"StartDay", Clock("07:00")},
                             {"EndDay", Clock("23:59")},
                             {"TotHrs", "16.98"},
                             {"JobCount", "7"},
                             {"JobHrs", "8"}});
    ExpectTotals(totals[1], {{"WorkDate", Day(kTuesday)},
                             {"StartDay", Clock("07:30")},
                             {"EndDay", Clock("23:59")},
                             {"TotHrs", "16.48"},
                             {"JobCount", "1"},
                             {"JobHrs", "16.48"}});
    ExpectTotals(totals[2], {{"WorkDate", Day(kWednesday)},
                             {"StartDay", Clock("08:00")},
                             {"EndDay", Clock("23:59")},
                             {"TotHrs", "15.98"},
                             {"JobCount", "1"},
                             {"JobHrs", "15.98"}});
}

// Three orders, each field as it has to be; everything else as it was.
void ThreeDaysTest::ExpectOrders()
{
    const ExportedChange orders = ChangeBetween(orders_, MdbExport(file, "WorkOrder"));
    ASSERT_EQ(orders.added.size(), 3U);
    for (const Order order : {A, B, C})
        ExpectFields(
            RowWith(orders.added, "WorkOrderNumber", std::to_string(scene.orders.at(order))),
            OrderAfter(order));
}

INSTANTIATE_TEST_SUITE_P(
    Shops, ThreeDaysTest,
    ::testing::Values(
        Scene{"shop", false, "Patel, Jack", "6", "8954", 31.99, {10125, 10011, 10152}},
        Scene{"shop-fresh", true, "Gomez, Michelle", "9", "7802", 16.97, {10037, 10112, 10125}}),
    [](const auto& each) { return each.param.isNew ? "NewShop" : "OldShop"; });

TEST_P(ThreeDaysTest, EndedForgottenAndSweptByTheClockAllEightTablesHoldExactlyTheirRows)
{
    TakeShop(scene.shop);
    if (IsSkipped()) return;
    Monday();
    ExpectMondaysTotals();
    Tuesday();
    Wednesday();

    ExpectBoard();
    ExpectJobs();
    ExpectTotalsOfAllDays();
    ExpectOrders();
    ExpectSameTables(before_, file, {"LDEmp", "LDHistory", "LDTotals", "Labor", "WorkOrder"});
}

}  // namespace
