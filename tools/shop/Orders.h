// SPDX-License-Identifier: Apache-2.0
// Orders: the repair orders of a sample shop, planned first, worked on, then written.
#pragma once

#include "tools/shop/People.h"
#include "tools/shop/Words.h"

#include <array>
#include <string>
#include <vector>

namespace tools::shop {

// The days on which the shop worked, the last of them today. Units: whole days of base::Date.
using WorkingDays = std::vector<double>;

// The last `count` working days up to today; Sundays and most Saturdays are none.
[[nodiscard]] WorkingDays WorkingDaysUntil(base::Date today, std::size_t count);

// Hours and cost of one labor category. Units: hours; ten-thousandths of money.
struct Category {
    double sold = 0, worked = 0;
    std::int64_t cost = 0;
};

struct Order {
    std::int32_t entry = 0;            // EntryNumber
    std::int32_t number = 0;           // WorkOrderNumber; 0 has none
    std::string_view type;             // WOType
    std::size_t vehicle = 0;           // place in People::vehicles
    std::size_t opened = 0, done = 0;  // places in the working days; done may lie ahead
    std::array<Category, kLaborTypes.size()> labor;
    std::int32_t bodyTech = 0, paintTech = 0;
    base::Date started;  // 0: not yet
    bool papers = true;  // has notes, and papers in other tables

    // Whether a technician can pick it in the list of repair orders.
    [[nodiscard]] bool Listed() const
    {
        return number > 0 && (type == "WorkOrder" || type == "Estimate");
    }
};

struct OrderBook {
    std::vector<Order> orders;  // by EntryNumber
    std::size_t inWork = 1;     // how many are in work at one time

    // One on which work goes on at that working day of `days`. Requires: one is listed.
    [[nodiscard]] Order& InWorkOn(std::size_t day, std::size_t days, Dice& dice);
};

[[nodiscard]] OrderBook PlanOrders(Dice dice, const People& people, std::size_t days, int count);

// Fills WorkOrder and what hangs on it: estimate lines, parts, purchases, payments, attachments.
void WriteOrders(ShopFile& file, Dice dice, const People& people, const WorkingDays& days,
                 const OrderBook& book);

// The papers of one order and what they come to. Units: hundredths of money.
struct PaperTotals {
    std::int64_t parts = 0, paid = 0;
    double paintHours = 0;
};
[[nodiscard]] PaperTotals WriteLines(ShopFile& file, Dice& dice, const Order& order);
void WritePurchases(ShopFile& file, Dice& dice, const People& people, const WorkingDays& days,
                    const Order& order);
void WritePayment(ShopFile& file, Dice& dice, base::Date received, const Order& order,
                  std::int64_t cents);
void WriteAttachments(ShopFile& file, Dice& dice, const WorkingDays& days, const Order& order);
// The parts on the shelf. Returns nothing: their numbers are those of PartNumberOf.
void WriteParts(ShopFile& file, Dice dice, const People& people, base::Date today);
[[nodiscard]] std::string PartNumberOf(const PartName& part);

}  // namespace tools::shop
