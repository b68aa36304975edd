// SPDX-License-Identifier: Apache-2.0
// modBuildLD: creates the program's own tables where they are missing.
#pragma once

#include <string>

namespace lodrin {

struct Shop;

// `folder` holds the database, without trailing separator. Location: "Sub modBuildLD!BuildLD()".
void BuildLD(Shop& shop, const std::string& folder);

}  // namespace lodrin
