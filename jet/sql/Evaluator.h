// SPDX-License-Identifier: Apache-2.0
// Evaluator: the value of a bound expression on one row.
#pragma once

#include "base/Value.h"
#include "jet/format/RowView.h"
#include "jet/sql/Ast.h"
#include "jet/sql/Functions.h"
#include "jet/sql/Operators.h"
#include "jet/table/RowSource.h"

#include <span>

namespace jet::sql {

// Where the values of names come from.
class Row {
public:
    Row() = default;
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;
    virtual ~Row() = default;
    // `place` as the scope told it.
    [[nodiscard]] virtual base::Value Value(std::size_t place) const = 0;
};

// A stored row. Requires: source and view outlive it.
class StoredRowValues final : public Row {
public:
    StoredRowValues(const table::RowSource& rows, const format::RowView& view)
        : rows_(rows), view_(view)
    {
    }
    [[nodiscard]] base::Value Value(std::size_t place) const override
    {
        return rows_.ValueOf(view_, place);
    }

private:
    const table::RowSource& rows_;
    const format::RowView& view_;
};

// For expressions that name no field.
class NoRow final : public Row {
public:
    [[nodiscard]] base::Value Value(std::size_t) const override { return {}; }
};

// Rule:   only the branch that is needed of IIf, Switch, Choose, And, Or is evaluated.
// Errors: 3464 a value of the wrong kind, 3071 a function's argument out of its range.
[[nodiscard]] base::Value Evaluate(const Expression& expression, const Row& row,
                                   const Environment& environment,
                                   std::span<const base::Value> aggregates = {});

}  // namespace jet::sql
