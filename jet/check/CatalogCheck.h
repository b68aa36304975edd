// SPDX-License-Identifier: Apache-2.0
// CatalogCheck: the objects a database says it has.
#pragma once

#include "jet/check/TableCheck.h"

#include <map>
#include <memory>

namespace jet::check {

// The table of objects itself; where it is, is fixed.
inline constexpr PageNumber kObjects{2};

// The tables of a file by the first page of their definition.
using Tables = std::map<PageNumber, std::unique_ptr<TableFacts>>;

// Definition pages that the rows of the table of objects name, ascending; finds rows that name
// none.
[[nodiscard]] std::vector<PageNumber> ListedTables(Inspection& inspection,
                                                   const TableFacts& objects);

// Finds what is wrong with the rows of the system tables. Requires: all tables were checked.
void CheckCatalog(Inspection& inspection, const Tables& tables);

}  // namespace jet::check
