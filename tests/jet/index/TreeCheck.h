// SPDX-License-Identifier: Apache-2.0
// TreeCheck: every invariant of an index's pages, said in words when one is broken.
#pragma once

#include "jet/format/TableDefinition.h"
#include "jet/pages/Pager.h"

#include <string>
#include <vector>

namespace jet {

struct TreeReport {
    std::vector<std::string> faults;
    // Faults of the level byte, which some writers leave 0 on every page.
    std::vector<std::string> levelFaults;
    std::size_t levels = 0;
    std::size_t pages = 0;
    std::vector<std::vector<std::byte>> entries;  // in key order
};

[[nodiscard]] TreeReport CheckTree(pages::Pager& pager, format::PageNumber table,
                                   const format::IndexDefinition& index);

}  // namespace jet
