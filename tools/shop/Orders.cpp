// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/Orders.h"

#include "base/Calendar.h"
#include "base/Format.h"

#include <algorithm>
#include <cmath>

namespace tools::shop {

namespace {

constexpr std::int32_t kFirstNumber = 10001;
constexpr std::int64_t kLaborRate = 5200, kPaintRate = 3400;  // hundredths an hour
constexpr double kTaxRate = 7.25;                             // percent

std::string_view TypeOf(Dice& dice)
{
    const int throwOf100 = dice.Between(1, 100);
    if (throwOf100 <= 72) return "WorkOrder";
    if (throwOf100 <= 92) return "Estimate";
    return throwOf100 <= 97 ? "Quote" : "Template";
}

// A moment in the working hours of a day.
base::Date At(Dice& dice, double day)
{
    return {day + dice.Between(7 * 3600, 17 * 3600) / 86400.0};
}

// The day `places` after one of the working days; days to come are guessed.
double DayAt(const WorkingDays& days, std::size_t place)
{
    if (place < days.size()) return days[place];
    return days.back() + static_cast<double>(place - days.size() + 1) * 1.4;
}

// How far an open order has come, as a place in the list of departments.
std::size_t DepartmentOf(Dice& dice, const Order& order, std::size_t today)
{
    if (order.done <= today) return kDepartments.size() - 1;
    const double span = static_cast<double>(order.done - order.opened) + 1;
    const double gone = static_cast<double>(today - order.opened) / span;
    const auto place = static_cast<std::size_t>(gone * static_cast<double>(kDepartments.size()));
    return std::min(kDepartments.size() - 1, place + (dice.Percent(25) ? 1U : 0U));
}

std::string AuditNotes(Dice& dice, const People& people, const WorkingDays& days,
                       const Order& order, std::size_t department)
{
    std::string notes;
    for (std::size_t i = 1; i <= department; ++i) {
        const std::size_t place = order.opened + (order.done - order.opened) * i / 10;
        if (place >= days.size()) break;
        const auto& employee = people.employees[static_cast<std::size_t>(
            dice.Between(0, static_cast<int>(people.employees.size()) - 1))];
        notes += "\r\n[" + employee.BoardName() + " - " +
                 base::Format(At(dice, days[place]), "mm/dd/yyyy - hh:mm AMPM") +
                 "] Department changed to " + std::string(kDepartments[i].name);
    }
    return notes;
}

void AddOwner(RowValues& row, const People& people, const Order& order)
{
    const OwnedVehicle& vehicle = people.vehicles[order.vehicle];
    const Customer& owner = people.customers[vehicle.owner];
    row.insert(row.end(), {{"ProfileNumber", owner.number},
                           {"ProfileDescriptionL1", owner.name},
                           {"ProfileDescriptionL2", owner.street},
                           {"ProfileDescriptionL3", owner.town},
                           {"ServiceItemNumber", vehicle.number},
                           {"ServiceItemDescriptionL1", vehicle.description},
                           {"ServiceItemDescriptionL2", vehicle.detail},
                           {"VIN", vehicle.vin},
                           {"License", vehicle.license},
                           {"Color", vehicle.color},
                           {"PaintCode", vehicle.paintCode},
                           {"Mileage", vehicle.mileage}});
}

void AddClaim(RowValues& row, Dice& dice, double day)
{
    if (dice.Percent(18)) {
        row.emplace_back("InsuranceCompany", "Customer Pay");
        return;
    }
    const auto number = [&](int low, int high) { return std::to_string(dice.Between(low, high)); };
    const std::string region = number(10, 89), claim = number(100000, 999999);
    const std::string_view adjuster = dice.Pick(kFirstNames);
    row.insert(row.end(),
               {{"InsuranceCompany", dice.Pick(kInsurers)},
                {"ClaimNumber", region + "-" + claim},
                {"PolicyNumber",
                 dice.Percent(70) ? base::Value("P" + number(1000000, 9999999)) : base::Value()},
                {"Adjuster", std::string(adjuster) + " " + std::string(dice.Pick(kLastNames))},
                {"Deductible", Cents(25000 * dice.Between(0, 4))},
                {"DateOfLoss", base::Date{day - dice.Between(1, 20)}},
                {"PointOfImpact", dice.Percent(50) ? "Left front" : "Right rear"}});
}

void AddDates(RowValues& row, Dice& dice, const WorkingDays& days, const Order& order,
              bool archived)
{
    const double opened = days[order.opened];
    row.emplace_back("DateCreated", At(dice, opened));
    row.emplace_back("DatePromised", base::Date{DayAt(days, order.done + 1) + 17.0 / 24});
    // Estimates and quotes whose car has not come have no further dates.
    if (order.started.days == 0) return;
    row.emplace_back("Arrived", base::Date{order.started.days - 1.0 / 24});
    row.emplace_back("Started", order.started);
    if (order.done >= days.size()) return;
    row.emplace_back("Completed", At(dice, days[order.done]));
    if (!archived) return;
    const double delivered = DayAt(days, order.done + 1);
    row.emplace_back("Delivered", At(dice, delivered));
    row.emplace_back("Closed", At(dice, delivered + dice.Between(0, 3)));
}

// Hours sold come near the hours worked; some totals were never filled in and are null.
void AddLabor(RowValues& row, Dice& dice, const Order& order, std::int64_t& sold)
{
    static constexpr std::array<std::array<std::string_view, 3>, 7> names{
        {{"BodySold", "BodyWorked", "BodyCost"},
         {"RefinishSold", "RefinishWorked", "RefinishCost"},
         {"FrameSold", "FrameWorked", "FrameCost"},
         {"MechSold", "MechWorked", "MechCost"},
         {"StructSold", "StructWorked", "StructCost"},
         {"GlassSold", "GlassWorked", "GlassCost"},
         {"OtherSold", "OtherWorked", "OtherCost"}}};
    static_assert(names.size() == kLaborTypes.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Category& category = order.labor[i];
        const double hours = std::round(category.worked * dice.Between(85, 130) / 10) / 10;
        sold += std::llround(hours * static_cast<double>(kLaborRate));
        row.emplace_back(names[i][0], hours);
        const bool never = category.worked == 0 && dice.Percent(10);
        row.emplace_back(names[i][1], never ? base::Value() : base::Value(category.worked));
        row.emplace_back(names[i][2],
                         never ? base::Value() : base::Value(base::Currency{category.cost}));
    }
}

void AddMoney(RowValues& row, std::int64_t labor, const PaperTotals& papers, bool archived)
{
    const auto paint = std::llround(papers.paintHours * static_cast<double>(kPaintRate));
    const auto tax = std::llround(static_cast<double>(papers.parts) * kTaxRate / 100);
    const std::int64_t grand = labor + papers.parts + paint + tax;
    row.insert(row.end(), {{"PartsTotal", Cents(papers.parts)},
                           {"PaintTotal", Cents(paint)},
                           {"LaborTotal", Cents(labor)},
                           {"TaxTotal", Cents(tax)},
                           {"GrandTotal", Cents(grand)},
                           {"AmountPaid", Cents(archived ? grand : 0)},
                           {"TaxRate", kTaxRate},
                           {"LaborRate", static_cast<double>(kLaborRate) / 100},
                           {"PaintRate", static_cast<double>(kPaintRate) / 100}});
}

void AddRemarks(RowValues& row, Dice& dice, const Order& order)
{
    row.insert(row.end(), {{"Priority", dice.Between(1, 5)},
                           {"SupplementCount", dice.Between(0, 2)},
                           {"Printed", dice.Percent(80)},
                           {"TotalLoss", dice.Percent(3)},
                           {"Drivable", dice.Percent(60)},
                           {"RentalNeeded", dice.Percent(30)},
                           {"PhotosTaken", dice.Percent(50)}});
    if (!order.papers) return;
    if (dice.Percent(40)) row.emplace_back("Comments", dice.Pick(kRemarks));
    // A long story that does not fit on one page.
    if (!dice.Percent(3)) return;
    std::string story;
    for (int i = dice.Between(40, 120); i > 0; --i) {
        story += dice.Pick(kRemarks);
        story += "\r\n";
    }
    row.emplace_back("InternalNotes", story);
}

void WriteOrder(ShopFile& file, Dice& dice, const People& people, const WorkingDays& days,
                const Order& order)
{
    const std::size_t today = days.size() - 1;
    const bool archived = order.done + 4 < today || (order.done < today && dice.Percent(50));
    const std::size_t department = DepartmentOf(dice, order, today);
    RowValues row{{"WOType", order.type}, {"Archived", archived}};
    // Templates have no number; a few quotes carry a 0 in its place.
    if (order.number > 0)
        row.emplace_back("WorkOrderNumber", order.number);
    else if (order.type == "Quote")
        row.emplace_back("WorkOrderNumber", 0);
    AddOwner(row, people, order);
    AddClaim(row, dice, days[order.opened]);
    AddDates(row, dice, days, order, archived);
    if (order.started.days != 0) {
        row.emplace_back("BLTech", order.bodyTech);
        row.emplace_back("RLTech", order.paintTech);
        row.emplace_back("DeptSequence", kDepartments[department].sequence);
        row.emplace_back("Progress", dice.Pick(kProgress));
        const std::string notes = AuditNotes(dice, people, days, order, department);
        if (order.papers && !notes.empty()) row.emplace_back("AuditNotes", notes);
    }
    row.emplace_back("Estimator", dice.Pick(kFirstNames));
    std::int64_t labor = 0;
    AddLabor(row, dice, order, labor);
    const PaperTotals papers = order.papers ? WriteLines(file, dice, order) : PaperTotals{};
    AddMoney(row, labor, papers, archived);
    AddRemarks(row, dice, order);
    file.Add("WorkOrder", row);
    if (!order.papers) return;
    WritePurchases(file, dice, people, days, order);
    WriteAttachments(file, dice, days, order);
    if (archived)
        WritePayment(file, dice, {DayAt(days, order.done + 1)}, order, labor + papers.parts);
}

}  // namespace

WorkingDays WorkingDaysUntil(base::Date today, std::size_t count)
{
    WorkingDays days{std::floor(today.days)};
    while (days.size() < count) {
        double day = days.back() - 1;
        const auto isFree = [](double which) {
            const int weekday = base::WeekdayOf({which});
            return weekday == 7 || (weekday == 6 && static_cast<int>(which) % 5 != 0);
        };
        while (isFree(day))
            --day;
        days.push_back(day);
    }
    std::reverse(days.begin(), days.end());
    return days;
}

OrderBook PlanOrders(Dice dice, const People& people, std::size_t days, int count)
{
    OrderBook book;
    const auto orders = static_cast<std::size_t>(count);
    book.inWork = std::clamp<std::size_t>(orders / 4, 1, 45);
    // Orders come and go in the order of their numbers; so many do until today.
    const std::size_t turnover = orders - book.inWork;
    std::int32_t number = kFirstNumber;
    for (std::size_t i = 0; i < orders; ++i) {
        Order order;
        order.entry = static_cast<std::int32_t>(i) + 1;
        // The first is there so that there is always something to work on.
        order.type = i == 0 ? "WorkOrder" : TypeOf(dice);
        number += dice.Percent(12) ? 2 : 1;
        if (order.type != "Template" && !(order.type == "Quote" && dice.Percent(50)))
            order.number = number;
        order.vehicle =
            static_cast<std::size_t>(dice.Between(0, static_cast<int>(people.vehicles.size()) - 1));
        order.opened = i < book.inWork ? 0 : (i - book.inWork) * days / turnover;
        order.done = turnover == 0 ? days : (i + 1) * days / turnover;
        book.orders.push_back(order);
    }
    return book;
}

Order& OrderBook::InWorkOn(std::size_t day, std::size_t days, Dice& dice)
{
    const std::size_t oldest = (orders.size() - inWork) * day / days;
    for (int tries = 0; tries < 40; ++tries) {
        const int place = dice.Between(0, static_cast<int>(inWork) - 1);
        Order& order = orders[oldest + static_cast<std::size_t>(place)];
        if (order.Listed()) return order;
    }
    return orders.front();
}

void WriteOrders(ShopFile& file, Dice dice, const People& people, const WorkingDays& days,
                 const OrderBook& book)
{
    WriteParts(file, dice.Fork(1), people, {days.back()});
    for (const Order& order : book.orders)
        WriteOrder(file, dice, people, days, order);
    // An order entered by mistake and taken out again.
    file.Delete("WorkOrder", file.Add("WorkOrder", {{"WOType", "WorkOrder"}}));
}

}  // namespace tools::shop
