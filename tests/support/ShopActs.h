// SPDX-License-Identifier: Apache-2.0
// ShopActs: each kind of work by which the program writes, done once in a shop made for it.
#pragma once

#include "tests/support/FileKind.h"

#include <iosfwd>
#include <string_view>
#include <vector>

namespace tests {

class ShopWorld;

// Rule: neither function raises an error when the disk fails underneath, but `run` while it opens
//       the shop.
struct ShopAct {
    const char* name;
    // Makes the database. Requires: nothing lies there.
    void (*make)(ShopWorld& world);
    // Opens the shop and does it.
    void (*run)(ShopWorld& world);
};

[[nodiscard]] const std::vector<ShopAct>& ShopActs();
// Rule: std::logic_error when there is none of that name.
[[nodiscard]] const ShopAct& ShopActOf(std::string_view name);

// The program starts the next morning, whatever happened.
void StartNextMorning(ShopWorld& world);

void PrintTo(const ShopAct& act, std::ostream* out);

}  // namespace tests
