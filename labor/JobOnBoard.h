// SPDX-License-Identifier: Apache-2.0
// JobOnBoard: tells one job on the board from every other.
#pragma once

#include <string>

namespace platform {
class Grid;
}

namespace lodrin {

// The open job of the board's row: whose, and since when on which order.
// Errors: 9 for a board without columns.
[[nodiscard]] std::string JobOnBoard(const platform::Grid& board);

}  // namespace lodrin
