// SPDX-License-Identifier: Apache-2.0
// NumberColumn: a column of numbers, dates or booleans, read without making a value.
#pragma once

#include "jet/format/RowView.h"

#include <optional>

namespace jet::sql {

class NumberColumn {
public:
    // Nothing when the column holds something else. Requires: `column` is a place in the table.
    [[nodiscard]] static std::optional<NumberColumn> Of(const format::TableDefinition& table,
                                                        std::size_t column);

    // As NumberIn of the column's value: true is -1; nothing for null. Errors: 3343.
    [[nodiscard]] std::optional<double> In(const format::RowView& row) const;
    [[nodiscard]] format::ColumnType Type() const { return type_; }

private:
    NumberColumn(std::size_t column, format::ColumnType type) : column_(column), type_(type) {}

    std::size_t column_;
    format::ColumnType type_;
};

}  // namespace jet::sql
