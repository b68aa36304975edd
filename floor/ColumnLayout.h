// SPDX-License-Identifier: Apache-2.0
// ColumnLayout: how the window's grids show their columns.
#pragma once

#include "platform/controls/Grid.h"

#include <span>

namespace lodrin {

class ResumeNext;

// One shown column. Units: the column's number in the table, from 1; its width in twips.
struct ColumnLayout {
    int column = 0;
    const char* caption = "";
    int width = 0;
    const char* format = "";
    platform::Alignment header = platform::Alignment::Left;
    platform::Alignment text = platform::Alignment::Left;
};

// Shows these columns, in this order from the left, and hides all others of the grid.
void LayOut(const ResumeNext& attempt, platform::Grid& grid, std::span<const ColumnLayout> shown);

}  // namespace lodrin
