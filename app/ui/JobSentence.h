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

// A row of the board, and one of the day's jobs, as they are read aloud:
//
//     "Jones, Bob, working on repair order 1023 since 08:05 AM, BL, 2012 Ford F-150, Taylor"
//     "Jones, Bob, day started 07:58 AM, no job open"
//     "Repair order 1023, 2012 Ford F-150, BL, 08:05 AM to 10:20 AM, 2.25 hours"
//
// Units: rows count from 1.
[[nodiscard]] std::string BoardRowInWords(const platform::Grid& board, int row);
[[nodiscard]] std::string JobRowInWords(const platform::Grid& jobs, int row);

}  // namespace lodrin::ui
