// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/GridModel.h"

#include "platform/qt/QtText.h"

namespace platform::qt {

namespace {

QVariant AlignmentOf(Alignment alignment)
{
    switch (alignment) {
    case Alignment::Right:
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case Alignment::Center:
        return QVariant(Qt::AlignCenter);
    case Alignment::Left:
        break;
    }
    return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
}

}  // namespace

GridModel::GridModel(const Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(&grid)
{
}

bool GridModel::Sync()
{
    const bool reshaped = columns_ != grid_->ColumnCount();
    if (reshaped) {
        beginResetModel();
        rows_ = grid_->RowCount();
        columns_ = grid_->ColumnCount();
        endResetModel();
        return true;
    }
    const bool moreOrFewer = SyncRows();
    if (columns_ > 0) emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
    if (rows_ > 0 && columns_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    return moreOrFewer;
}

bool GridModel::SyncRows()
{
    const int rows = grid_->RowCount();
    if (rows == rows_) return false;
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
    return true;
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    // Between a change of the grid and its Sync the grid may hold less than the view believes.
    if (!index.isValid() || index.column() >= grid_->ColumnCount()) return {};
    const int column = index.column() + 1;
    if (role == Qt::DisplayRole) return ToQt(grid_->Shown(index.row() + 1, column));
    if (role == Qt::TextAlignmentRole) return AlignmentOf(grid_->ColumnAt(column).textAlignment);
    if (role == Qt::AccessibleDescriptionRole && inWords) return ToQt(inWords(index.row() + 1));
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    if (!index.isValid() || index.column() >= grid_->ColumnCount()) return usual;
    const bool typedInto = grid_->allowEdit && grid_->ColumnAt(index.column() + 1).editable;
    return typedInto ? usual | Qt::ItemIsEditable : usual;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= grid_->ColumnCount()) return {};
    const Column& column = grid_->ColumnAt(section + 1);
    if (role == Qt::DisplayRole) return ToQt(column.caption);
    if (role == Qt::TextAlignmentRole) return AlignmentOf(column.headerAlignment);
    return {};
}

}  // namespace platform::qt
