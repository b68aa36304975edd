// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/ClockWork.h"

#include "base/Calendar.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tools::shop {

namespace {

constexpr int kJobsADay = 4;                                      // of one employee, on average
constexpr int kMorning = 7 * 60, kFullDay = 510, kHalfDay = 340;  // minutes

// A time of day as a field of its own. Units: minutes since midnight.
base::Date TimeAt(int minutes)
{
    return base::DateFrom({.hour = minutes / 60, .minute = minutes % 60});
}

// Units: hours with two decimals, from minutes.
double HoursOf(int minutes)
{
    return std::round(minutes * 100 / 60.0) / 100;
}

// The place of a labor type, each as often as its share says.
std::size_t SomeLaborType(Dice& dice)
{
    int left = dice.Between(1, 100);
    for (std::size_t i = 0; i < kLaborTypes.size(); ++i) {
        left -= kLaborTypes[i].share;
        if (left <= 0) return i;
    }
    return 0;
}

// What an employee is doing at this moment of today.
enum class Now { Working, OnBreak, Gone, NotCome };

Now NowOf(std::size_t employee)
{
    constexpr std::array pattern{Now::Working, Now::OnBreak, Now::Working, Now::NotCome,
                                 Now::Working, Now::Gone,    Now::Working};
    return pattern[employee % pattern.size()];
}

class Clock {
public:
    Clock(ShopFile& file, Dice dice, const ClockPlan& plan, OrderBook& book)
        : file_(file), dice_(dice), plan_(plan), book_(book)
    {
    }

    void WorkDay(std::size_t day, int jobs);
    void FillBoard();

private:
    [[nodiscard]] std::vector<int> Share(std::size_t day, int jobs);
    void WorkEmployee(std::size_t day, const Employee& employee, int jobs, bool writesTotals);
    void FinishJob(std::size_t day, const Employee& employee, int from, int to);
    void AddToOrder(Order& order, std::size_t day, std::size_t laborType, const Employee& employee,
                    int from, int to);
    void AddBoardRow(const Employee& employee, Now now, std::string_view prefix);
    [[nodiscard]] bool Recorded() const { return plan_.clockRows == ClockRows::Written; }
    [[nodiscard]] bool IsToday(std::size_t day) const { return day + 1 == plan_.days.size(); }

    ShopFile& file_;
    Dice dice_;
    const ClockPlan& plan_;
    OrderBook& book_;
    int done_ = 0;
    // Today's first and last minute of each employee's number.
    std::map<std::int32_t, std::pair<int, int>> today_;
};

// The day's jobs dealt out: about the same for everybody, today none to those who have not come.
std::vector<int> Clock::Share(std::size_t day, int jobs)
{
    std::vector<std::size_t> there;
    for (std::size_t i = 0; i < plan_.people.employees.size(); ++i)
        if (!IsToday(day) || NowOf(i) != Now::NotCome) there.push_back(i);
    std::vector<int> share(plan_.people.employees.size(), 0);
    for (int i = 0; i < jobs; ++i)
        ++share[there[(day + static_cast<std::size_t>(i)) % there.size()]];
    // Some have many short jobs, some few long ones; now and then somebody stays away.
    for (std::size_t i = 0; i + 1 < there.size(); i += 2) {
        const int most = dice_.Percent(4) ? share[there[i]] : std::min(1, share[there[i]]);
        const int moved = dice_.Percent(40) ? most : 0;
        share[there[i]] -= moved;
        share[there[i + 1]] += moved;
    }
    return share;
}

void Clock::WorkDay(std::size_t day, int jobs)
{
    const std::vector<int> share = Share(day, jobs);
    for (std::size_t i = 0; i < share.size(); ++i) {
        if (share[i] == 0) continue;
        const bool ended = !IsToday(day) || NowOf(i) == Now::Gone;
        WorkEmployee(day, plan_.people.employees[i], share[i], ended);
    }
}

void Clock::WorkEmployee(std::size_t day, const Employee& employee, int jobs, bool writesTotals)
{
    const int minutes = IsToday(day) ? kHalfDay : kFullDay;
    const int start = kMorning + dice_.Between(0, 25);
    int time = start;
    double hours = 0;
    for (int job = 0; job < jobs; ++job) {
        const int rest = start + minutes - time, mean = std::max(2, rest / (jobs - job));
        const int length = std::max(1, dice_.Between(mean * 2 / 3, mean));
        FinishJob(day, employee, time, time + length);
        hours += HoursOf(length);
        time += length + (dice_.Percent(30) ? dice_.Between(0, mean / 8) : 0);
    }
    const int end = time + dice_.Between(0, 15);
    if (IsToday(day)) today_[employee.number] = {start, end};
    if (!writesTotals || !Recorded()) return;
    file_.Add("LDTotals", {{"EmpID", employee.number},
                           {"WorkDate", base::Date{plan_.days[day]}},
                           {"StartDay", TimeAt(start)},
                           {"EndDay", TimeAt(end)},
                           {"TotHrs", HoursOf(end - start)},
                           {"JobCount", jobs},
                           {"JobHrs", std::round(hours * 100) / 100}});
}

void Clock::FinishJob(std::size_t day, const Employee& employee, int from, int to)
{
    Order& order = book_.InWorkOn(day, plan_.days.size(), dice_);
    const std::size_t laborType = SomeLaborType(dice_);
    AddToOrder(order, day, laborType, employee, from, to);
    const OwnedVehicle& vehicle = plan_.people.vehicles[order.vehicle];
    const std::string_view code = kLaborTypes[laborType].code;
    const base::Date date{plan_.days[day]}, in = TimeAt(from), out = TimeAt(to);
    const double hours = HoursOf(to - from);
    if (Recorded())
        file_.Add("LDHistory", {{"EmpID", employee.number},
                                {"WorkDate", date},
                                {"JobStart", in},
                                {"JobEnd", out},
                                {"WONumb", order.number},
                                {"WOID", order.entry},
                                {"GLType", code},
                                {"Hrs", hours},
                                {"VehDesc", vehicle.description},
                                {"Customer", plan_.people.customers[vehicle.owner].name}});
    const bool paid = day + 10 < plan_.days.size();
    file_.Add("Labor", {{"EmployeeID", employee.number},
                        {"WONumber", order.entry},
                        {"EmpRate", Cents(employee.rate)},
                        {"LastName", employee.lastName},
                        {"FirstName", employee.firstName},
                        {"GLType", code},
                        {"FlagDate", date},
                        {"TimeIN", in},
                        {"TimeOut", out},
                        {"HrsFlagged", hours},
                        {"HrsActual", 0},
                        {"WorkOrder", order.number},
                        {"MiscDesc", vehicle.description},
                        {"Paid", paid},
                        {"PayBatch", paid ? static_cast<std::int32_t>(day / 10) + 1 : 0}});
    if (++done_ % 10000 == 0 && plan_.progress) plan_.progress(done_);
}

void Clock::AddToOrder(Order& order, std::size_t day, std::size_t laborType,
                       const Employee& employee, int from, int to)
{
    Category& category = order.labor[laborType];
    const double hours = HoursOf(to - from);
    category.worked = std::round((category.worked + hours) * 100) / 100;
    category.cost += std::llround(hours * static_cast<double>(employee.rate) * 100);
    if (order.started.days == 0) order.started = {plan_.days[day] + from / 1440.0};
    if (kLaborTypes[laborType].code == "BL" && order.bodyTech == 0)
        order.bodyTech = employee.number;
    if (kLaborTypes[laborType].code == "RL" && order.paintTech == 0)
        order.paintTech = employee.number;
}

// One row of LDEmp. Those who had a job today keep their day; a job taken off is null, not 0.
void Clock::AddBoardRow(const Employee& employee, Now now, std::string_view prefix)
{
    RowValues row{{"EmpID", employee.number}, {"Name", std::string(prefix) + employee.BoardName()}};
    if (now == Now::NotCome) {
        row.insert(row.end(),
                   {{"WO#", 0}, {"WOID", 0}, {"VehDesc", ""}, {"Customer", ""}, {"GLType", ""}});
        file_.Add("LDEmp", row);
        return;
    }
    const auto known = today_.find(employee.number);
    const auto [start, end] =
        known == today_.end() ? std::pair{kMorning, kMorning + kHalfDay} : known->second;
    row.emplace_back("StartDay", TimeAt(start));
    row.emplace_back("WorkDate", base::Date{plan_.days.back()});
    if (now == Now::Gone) row.emplace_back("EndDay", TimeAt(end));
    if (now == Now::Working) {
        const Order& order = book_.InWorkOn(plan_.days.size() - 1, plan_.days.size(), dice_);
        const OwnedVehicle& vehicle = plan_.people.vehicles[order.vehicle];
        row.insert(row.end(), {{"StartJob", TimeAt(end)},
                               {"WO#", order.number},
                               {"WOID", order.entry},
                               {"VehDesc", vehicle.description},
                               {"Customer", plan_.people.customers[vehicle.owner].name},
                               {"GLType", kLaborTypes[SomeLaborType(dice_)].code}});
    } else {
        row.insert(row.end(), {{"VehDesc", ""}, {"Customer", ""}, {"GLType", ""}});
    }
    file_.Add("LDEmp", row);
}

void Clock::FillBoard()
{
    if (!Recorded()) return;
    const std::vector<Employee>& employees = plan_.people.employees;
    for (std::size_t i = 0; i < employees.size(); ++i)
        AddBoardRow(employees[i], NowOf(i), "");
    for (const Employee& hidden : plan_.people.hidden)
        AddBoardRow(hidden, Now::NotCome, "");
    // Somebody who left the shop: his row was taken off.
    file_.Delete("LDEmp", file_.Add("LDEmp", {{"EmpID", 99999}, {"Name", "Left, Long Ago"}}));
}

}  // namespace

std::size_t DaysFor(int history, int employees)
{
    const int jobs = std::max(1, employees * kJobsADay);
    return static_cast<std::size_t>(std::max(20, (history + jobs - 1) / jobs));
}

void WorkAllDays(ShopFile& file, Dice dice, const ClockPlan& plan, OrderBook& book)
{
    Clock clock(file, dice, plan, book);
    const auto days = static_cast<std::int64_t>(plan.days.size());
    for (std::int64_t day = 0; day < days; ++day) {
        const std::int64_t before = plan.history * day / days;
        const std::int64_t after = plan.history * (day + 1) / days;
        clock.WorkDay(static_cast<std::size_t>(day), static_cast<int>(after - before));
    }
    clock.FillBoard();
}

}  // namespace tools::shop
