// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/SampleShop.h"

#include "tools/shop/ClockWork.h"
#include "tools/shop/Lists.h"
#include "tools/shop/ShopTables.h"

#include <cmath>

namespace tools::shop {

namespace {

// Of chance, but the same for the same seed; any key but none.
jet::format::Protection ProtectionOf(const SampleShop& wishes)
{
    if (!wishes.encoded) return {};
    Dice dice(wishes.seed);
    const auto half = [&dice] { return static_cast<std::uint32_t>(dice.Between(1, 0xFFFF)); };
    const std::uint32_t high = half();
    return {.encodingKey = high << 16 | half(), .password = {}};
}

}  // namespace

std::vector<Technician> MakeSampleShop(jet::io::FileSystem& files, const std::string& path,
                                       const SampleShop& wishes, const Progress& progress)
{
    const base::Date today{std::floor(wishes.today.days)};
    const Dice dice(wishes.seed);
    ShopFile file(files, path, *wishes.format, ProtectionOf(wishes), today);
    for (const auto& table : ManagementTables())
        file.Create(table);
    if (!wishes.fresh)
        for (const auto& table : ClockTables())
            file.Create(table);

    FillManagementLists(file, dice.Fork(1));
    if (!wishes.fresh) FillStatus(file);
    progress("people", 0);
    const People people = MakePeople(file, dice.Fork(2), today, wishes.employees, wishes.orders);

    const WorkingDays days = WorkingDaysUntil(today, DaysFor(wishes.history, wishes.employees));
    OrderBook book = PlanOrders(dice.Fork(3), people, days.size(), wishes.orders);
    for (Order& order : book.orders)
        order.papers = wishes.papers;
    const ClockPlan plan{.people = people,
                         .days = days,
                         .history = wishes.history,
                         .clockRows = wishes.fresh ? ClockRows::LeftOut : ClockRows::Written,
                         .progress = [&](int done) { progress("history", done); }};
    WorkAllDays(file, dice.Fork(4), plan, book);
    progress("orders", 0);
    WriteOrders(file, dice.Fork(5), people, days, book);
    file.Finish();

    std::vector<Technician> technicians;
    for (const Employee& employee : people.employees)
        technicians.push_back({employee.BoardName(), employee.pin});
    return technicians;
}

}  // namespace tools::shop
