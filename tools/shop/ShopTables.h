// SPDX-License-Identifier: Apache-2.0
// ShopTables: the tables of a sample shop, those of the management system and the clock's own.
#pragma once

#include "jet/catalog/NewTable.h"

#include <vector>

namespace tools::shop {

[[nodiscard]] std::vector<jet::catalog::NewTable> ManagementTables();

// LDEmp, LDTotals, LDHistory and Status, as the program makes them.
[[nodiscard]] std::vector<jet::catalog::NewTable> ClockTables();

}  // namespace tools::shop
