// SPDX-License-Identifier: Apache-2.0
// GridPreview: the print preview of a grid.
#pragma once

#include "platform/controls/Grid.h"
#include "platform/controls/Window.h"

#include <string>
#include <string_view>

namespace platform {

class GridPreview : public Control {
public:
    // What is previewed, under this title. Requires: the grid outlives its preview.
    void Fill(const Grid& grid, std::string_view title)
    {
        grid_ = &grid;
        title_ = title;
        ++fillings_;
        Changed();
    }
    // Nothing is previewed.
    void Clear()
    {
        grid_ = nullptr;
        title_.clear();
        ++fillings_;
        Changed();
    }
    [[nodiscard]] const Grid* Filled() const { return grid_; }
    [[nodiscard]] const std::string& Title() const { return title_; }

    // How often it was filled or cleared: where that differs, the pages are others.
    [[nodiscard]] int Fillings() const { return fillings_; }

    // Inside its window.
    [[nodiscard]] const Place& Where() const { return where_; }
    void Move(const Place& where)
    {
        where_ = where;
        Changed();
    }

private:
    const Grid* grid_ = nullptr;
    std::string title_;
    int fillings_ = 0;
    Place where_;
};

}  // namespace platform
