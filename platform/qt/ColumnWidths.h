// SPDX-License-Identifier: Apache-2.0
// ColumnWidths: how the columns of a table share the room that there is.
#pragma once

#include <vector>

namespace platform::qt {

// Units: logical pixels.
struct ColumnWish {
    int wished = 0;        // what its layout asks for
    int least = 0;         // below this it would have to cut its texts, or the little left of them
    bool elastic = false;  // takes the room that the others leave, and is the first to give some up
};

// The width of each column. Rule: elastic columns give way first, down to three fifths; then all
// do, each down to its least; where even that is too wide, the table has to be scrolled.
[[nodiscard]] std::vector<int> ShareRoom(const std::vector<ColumnWish>& columns, int room);

}  // namespace platform::qt
