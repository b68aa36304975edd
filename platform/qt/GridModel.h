// SPDX-License-Identifier: Apache-2.0
// GridModel: a Grid as the model of a table view.
#pragma once

#include "platform/controls/Grid.h"

#include <QAbstractTableModel>

#include <functional>
#include <string>

namespace platform::qt {

// Rule: model column n is the grid's column n + 1 whatever its place on the screen, and every
//       column is there; the view hides and moves them.
class GridModel : public QAbstractTableModel {
public:
    // Requires: the grid outlives the model's use.
    explicit GridModel(const Grid& grid, QObject* parent = nullptr);

    // A row, counted from 1, told in a sentence for those who hear the grid and do not see it.
    std::function<std::string(int row)> inWords;

    // Takes over what the grid holds now. Returns whether rows or columns came or went.
    bool Sync();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    bool SyncRows();

    const Grid* grid_;
    int rows_ = 0;
    int columns_ = 0;
};

}  // namespace platform::qt
