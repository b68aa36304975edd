// SPDX-License-Identifier: Apache-2.0
#include "floor/ColumnLayout.h"

#include "app/ResumeNext.h"

#include <algorithm>

namespace lodrin {

namespace {

void LayOutColumn(const ResumeNext& attempt, platform::Grid& grid, const ColumnLayout& layout)
{
    const int column = layout.column;
    attempt([&] { grid.ColumnAt(column).width = layout.width; });
    attempt([&] { grid.ColumnAt(column).caption = layout.caption; });
    attempt([&] { grid.ColumnAt(column).format = layout.format; });
    attempt([&] { grid.ColumnAt(column).headerAlignment = layout.header; });
    attempt([&] { grid.ColumnAt(column).textAlignment = layout.text; });
}

}  // namespace

void LayOut(const ResumeNext& attempt, platform::Grid& grid, std::span<const ColumnLayout> shown)
{
    const platform::ChangesHeld held(grid);
    for (int column = 1; column <= grid.ColumnCount(); ++column) {
        const auto layout = std::find_if(shown.begin(), shown.end(), [&](const ColumnLayout& each) {
            return each.column == column;
        });
        if (layout != shown.end())
            LayOutColumn(attempt, grid, *layout);
        else
            attempt([&] { grid.ColumnAt(column).visible = false; });
    }
    int position = 0;
    for (const ColumnLayout& layout : shown) {
        ++position;
        attempt([&] { grid.SetPosition(layout.column, position); });
    }
}

}  // namespace lodrin
