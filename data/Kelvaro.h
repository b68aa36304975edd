// SPDX-License-Identifier: Apache-2.0
// Kelvaro: the management system's database file, which this program works in.
#pragma once

#include "jet/dao/Database.h"

#include <string>

namespace lodrin {

struct Shop;

// The file in a folder (without trailing separator), as the program spells it.
[[nodiscard]] std::string KelvaroIn(const std::string& folder);

// Opens the file in DataPath, in the default workspace, shared.
// Errors: those of dao::Workspace::OpenDatabase.
[[nodiscard]] dao::Database OpenKelvaro(Shop& shop);

}  // namespace lodrin
