// SPDX-License-Identifier: Apache-2.0
// JobSentence: what the current employee is doing, in one line under his name.
#pragma once

#include <string>

namespace platform {
class Grid;
}

namespace lodrin::ui {

//     "WO 1023 · BL · since 08:05 AM · 2012 Ford F-150 · Taylor"
//     "Day started 07:58 AM · no job open"
//
// Rule: read from the board's current row as the board shows it; empty when there is none.
[[nodiscard]] std::string JobSentence(const platform::Grid& board);

}  // namespace lodrin::ui
