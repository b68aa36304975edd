// SPDX-License-Identifier: Apache-2.0
#include "tests/stations/StationWatch.h"

#include "base/Convert.h"
#include "data/Tables.h"
#include "labor/Hours.h"
#include "tests/support/ShopWorld.h"

#include <cmath>
#include <filesystem>
#include <iostream>

namespace tests {

namespace {

using lodrin::Labor;
using lodrin::LDEmp;
using lodrin::LDHistory;
using lodrin::WorkOrder;

// What holds of every row at every moment, because it is stored by one Update.
class Watcher {
public:
    void Look(ShopWorld& world)
    {
        for (const Record& order : world.Rows("SELECT * FROM WorkOrder"))
            Judge(order, OrderIsWhole(order));
        for (const Record& line : world.Rows("SELECT * FROM Labor"))
            Judge(line, JobIsWhole(line, Labor::TimeIN, Labor::TimeOut, Labor::HrsFlagged));
        for (const Record& job : world.Rows("LDHistory"))
            Judge(job, JobIsWhole(job, LDHistory::JobStart, LDHistory::JobEnd, LDHistory::Hrs));
        for (const Record& employee : world.Rows("SELECT * FROM LDEmp ORDER BY Name"))
            Judge(employee, EmployeeIsWhole(employee));
    }
    [[nodiscard]] std::size_t Reads() const { return reads_; }

private:
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

    std::size_t reads_ = 0;
};

}  // namespace

int WatchRows(const std::string& folder)
{
    ShopWorld world(folder, "OFFICE");
    Watcher watcher;
    std::cout << "ready" << std::endl;
    while (!std::filesystem::exists(folder + "/closing"))
        watcher.Look(world);
    std::cout << "reads " << watcher.Reads() << std::endl;
    return 0;
}

}  // namespace tests
