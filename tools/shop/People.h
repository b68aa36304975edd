// SPDX-License-Identifier: Apache-2.0
// People: the profiles of a sample shop and the vehicles of its customers.
#pragma once

#include "tools/shop/Dice.h"
#include "tools/shop/ShopFile.h"

#include <string>
#include <vector>

namespace tools::shop {

struct Employee {
    std::int32_t number = 0;
    std::string lastName, firstName;
    std::int64_t rate = 0;  // hundredths an hour
    std::string pin;        // empty: none, or blanks
    [[nodiscard]] std::string BoardName() const { return lastName + ", " + firstName; }
};

struct Customer {
    std::int32_t number = 0;
    std::string name, street, town;
};

// A vehicle and its owner (a place in People::customers).
struct OwnedVehicle {
    std::int32_t number = 0;
    std::size_t owner = 0;
    std::string description, detail, vin, license, color, paintCode;
    int mileage = 0;
};

struct People {
    std::vector<Employee> employees;  // who stand on the board
    std::vector<Employee> hidden;     // whose names begin with "@"; no employees to the management
    std::vector<Customer> customers;
    std::vector<OwnedVehicle> vehicles;
    std::vector<std::int32_t> vendors;
};

// Fills Profile and ServiceItem; some profiles are deleted again and leave gaps.
// Rule: the first employee's PIN is 1234, the second has none, the third's is blank.
[[nodiscard]] People MakePeople(ShopFile& file, Dice dice, base::Date today, int employees,
                                int orders);

}  // namespace tools::shop
