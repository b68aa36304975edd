// SPDX-License-Identifier: Apache-2.0
#include "tests/stations/StationWatch.h"

#include "base/Convert.h"
#include "data/Tables.h"
#include "labor/Hours.h"
#include "tests/support/ShopWorld.h"

#include <cmath>
#include <filesystem>
#include <iostream>
#include <map>
#include <vector>

namespace tests {

namespace {

using lodrin::Labor;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::WorkOrder;

// What holds of every row at every moment, because it is stored by one Update.
class Watcher {
public:
    explicit Watcher(const std::string& folder) : world_(folder, "OFFICE") {}

    // Every row of four tables.
    void LookAtAll()
    {
        orders_ = world_.Rows("SELECT * FROM WorkOrder");
        for (const Record& order : orders_)
            Judge(order, OrderIsWhole(order));
        lines_ = world_.Rows("SELECT * FROM Labor");
        for (const Record& line : lines_)
            Judge(line, LineIsWhole(line));
        for (const Record& job : world_.Rows("LDHistory"))
            Judge(job, JobIsWhole(job, LDHistory::JobStart, LDHistory::JobEnd, LDHistory::Hrs));
        for (const Record& employee : world_.Rows("SELECT * FROM LDEmp ORDER BY Name"))
            Judge(employee, EmployeeIsWhole(employee));
    }

    // The orders and some labor lines that were seen then, each by an index of the file.
    void AskForEach()
    {
        dao::Database database =
            world_.engine.DefaultWorkspace().OpenDatabase(world_.DatabasePath());
        dao::Recordset orders = database.OpenRecordset("SELECT * FROM WorkOrder");
        for (const Record& order : orders_) {
            Ask("WorkOrder", WorkOrder::EntryNumber, order, &OrderIsWhole);
            Find(orders, "WorkOrderNumber = " + order.Text(WorkOrder::WorkOrderNumber));
        }
        const std::size_t step = 1 + lines_.size() / kLinesAsked;
        for (std::size_t i = 0; i < lines_.size(); i += step)
            Ask("Labor", "LaborID", lines_[i], [&](const Record& line) {
                return line == lines_[i];  // nobody changes a labor line
            });
        AskForLinesOfEach();
    }

    [[nodiscard]] std::size_t Reads() const { return reads_; }
    [[nodiscard]] std::size_t Found() const { return found_; }

private:
    static constexpr std::size_t kLinesAsked = 20;

    // The one row of that number is there, and whole.
    template <typename IsWhole>
    void Ask(const std::string& table, std::string_view field, const Record& row,
             const IsWhole& isWhole)
    {
        const std::string criteria = std::string(field) + " = " + row.Text(field);
        const auto rows = world_.Rows("SELECT * FROM " + table + " WHERE " + criteria);
        if (rows.size() != 1) return Miss(table + ": " + criteria, rows.size());
        Judge(rows[0], rows[0][field] == row[field] && isWhole(rows[0]));
        ++found_;
    }

    void Find(dao::Recordset& orders, const std::string& criteria)
    {
        orders.FindFirst(criteria);
        if (orders.NoMatch()) return Miss(criteria, 0);
        const std::string number = base::TextOf(orders[WorkOrder::WorkOrderNumber].Value());
        if (criteria != "WorkOrderNumber = " + number) Miss(criteria + ", found " + number, 1);
        ++found_;
    }

    // Labor lines are added and never taken away.
    void AskForLinesOfEach()
    {
        std::map<std::string, std::size_t> seen;
        for (const Record& line : lines_)
            ++seen[line.Text(Labor::EmployeeID)];
        for (const auto& [employee, count] : seen) {
            const std::string criteria = "EmployeeID = " + employee;
            const auto lines = world_.Rows("SELECT * FROM Labor WHERE " + criteria);
            if (lines.size() < count) Miss("Labor: " + criteria, lines.size());
            for (const Record& line : lines)
                Judge(line, line.Text(Labor::EmployeeID) == employee && LineIsWhole(line));
            ++found_;
        }
    }

    static void Miss(const std::string& question, std::size_t found)
    {
        std::cout << "missed " << question << ", rows " << found << std::endl;
    }

    void Judge(const Record& row, bool whole)
    {
        ++reads_;
        if (whole) return;
        std::cout << "torn";
        for (const auto& [name, value] : row.fields)
            std::cout << " " << name << "=" << base::TextOf(value);
        std::cout << std::endl;
    }

    // All work at 20 an hour; the notes are whole lines, however long.
    static bool OrderIsWhole(const Record& order)
    {
        for (const char* work : {"Body", "Refinish", "Frame", "Mech", "Struct", "Glass"}) {
            const double hours = base::Val(order[std::string(work) + "Worked"]);
            const double cost = base::Val(order[std::string(work) + "Cost"]);
            if (std::abs(20 * hours - cost) > 0.001) return false;
        }
        const std::string notes = order.Text(WorkOrder::AuditNotes);
        const auto ends = [&](std::string_view end) {
            return notes.size() >= end.size() && notes.substr(notes.size() - end.size()) == end;
        };
        return notes.empty() || (notes.substr(0, 3) == "\r\n[" &&
                                 (ends("to Body") || ends("to Paint") || ends("to Detail")));
    }

    static bool LineIsWhole(const Record& line)
    {
        return JobIsWhole(line, Labor::TimeIN, Labor::TimeOut, Labor::HrsFlagged);
    }

    static bool JobIsWhole(const Record& job, std::string_view start, std::string_view end,
                           std::string_view hours)
    {
        if (job[start].IsNull() || job[end].IsNull()) return false;
        return std::abs(base::Val(lodrin::HoursBetween(job[start], job[end], "##.00")) -
                        base::Val(job[hours])) < 0.001;
    }

    static bool EmployeeIsWhole(const Record& employee)
    {
        const std::string number = employee.Text(LDEmp::WONumber.name);
        const std::string customer = employee.Text(LDEmp::Customer.name);
        const bool idle = number.empty() || number == "0";  // as the table or the clock leaves it
        return idle ? customer.empty() : customer == "Customer " + number;
    }

    ShopWorld world_;
    std::vector<Record> orders_, lines_;  // as they were seen last
    std::size_t reads_ = 0, found_ = 0;
};

}  // namespace

int WatchRows(const std::string& folder)
{
    Watcher watcher(folder);
    std::cout << "ready" << std::endl;
    while (!std::filesystem::exists(folder + "/closing")) {
        watcher.LookAtAll();
        watcher.AskForEach();
    }
    std::cout << "reads " << watcher.Reads() << ", found " << watcher.Found() << std::endl;
    return 0;
}

}  // namespace tests
