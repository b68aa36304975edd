// SPDX-License-Identifier: Apache-2.0
// ClockWork: the working days of a sample shop, as the time clock would have recorded them.
#pragma once

#include "tools/shop/Orders.h"

#include <functional>

namespace tools::shop {

enum class ClockRows { Written, LeftOut };

// What the working days are made from.
struct ClockPlan {
    const People& people;
    const WorkingDays& days;
    int history = 0;  // finished jobs in all
    ClockRows clockRows = ClockRows::Written;
    std::function<void(int done)> progress;  // called now and then with the jobs written so far
};

// Lets the employees work on the orders: fills Labor, LDHistory, LDTotals and LDEmp (Labor alone
// when the clock's rows are left out) and adds hours, cost and technicians to the orders.
// Rule: today is half over: some work, some are on break, some have gone, some have not come.
void WorkAllDays(ShopFile& file, Dice dice, const ClockPlan& plan, OrderBook& book);

// How many working days `history` jobs of `employees` take.
[[nodiscard]] std::size_t DaysFor(int history, int employees);

}  // namespace tools::shop
