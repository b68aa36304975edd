// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/ColumnWidths.h"

#include <algorithm>
#include <numeric>

namespace platform::qt {

namespace {

using Widths = std::vector<int>;

int Total(const Widths& widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0);
}

// The elastic columns share what is left over, or what is missing, evenly.
void Stretch(const std::vector<ColumnWish>& columns, Widths& widths, int room)
{
    int spare = room - Total(widths);
    auto elastic = static_cast<int>(std::count_if(columns.begin(), columns.end(),
                                                  [](const auto& each) { return each.elastic; }));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].elastic) continue;
        const int share = std::max(spare / elastic--, -widths[i] * 2 / 5);
        widths[i] += share;
        spare -= share;
    }
}

// Where room is missing, each column gives up the same part of what it can spare.
void Squeeze(const std::vector<ColumnWish>& columns, Widths& widths, int room)
{
    Widths spare;
    for (std::size_t i = 0; i < columns.size(); ++i)
        spare.push_back(std::max(0, widths[i] - columns[i].least));
    int all = Total(spare);
    int missing = std::min(Total(widths) - room, all);
    for (std::size_t i = 0; i < columns.size() && missing > 0; ++i) {
        const int given = missing * spare[i] / all;
        widths[i] -= given;
        missing -= given;
        all -= spare[i];
    }
}

}  // namespace

std::vector<int> ShareRoom(const std::vector<ColumnWish>& columns, int room)
{
    Widths widths;
    for (const ColumnWish& column : columns)
        widths.push_back(column.wished);
    Stretch(columns, widths, room);
    Squeeze(columns, widths, room);
    return widths;
}

}  // namespace platform::qt
