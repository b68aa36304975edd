// SPDX-License-Identifier: Apache-2.0
// Filter: a condition made ready to be tried on many rows.
#pragma once

#include "jet/format/NumberColumn.h"
#include "jet/sql/Evaluator.h"

#include <memory>
#include <optional>
#include <vector>

namespace jet::sql {

// Keeps the rows on which a condition is true (not false and not null).
//
// Rule: the parts of the condition that are joined by And and compare a field of fixed width with a
//       constant are tried first, on the stored bytes, without making a value.
class Filter {
public:
    // Passes every row.
    Filter() = default;
    // Requires: a bound condition over the columns of `rows`; condition, rows and environment
    //           outlive it.
    Filter(const Expression& condition, const table::RowSource& rows,
           const Environment& environment);

    // Errors: those of Evaluate.
    [[nodiscard]] bool Passes(const format::RowView& row) const
    {
        for (const NumberTest& test : numbers_)
            if (!test.Passes(row)) return false;
        return (texts_.empty() && others_.empty()) || PassesRest(row);
    }

    // Whether every row passes.
    [[nodiscard]] bool IsEmpty() const
    {
        return numbers_.empty() && texts_.empty() && others_.empty();
    }
    // Columns that must equal a value for a row to pass; what an index can answer.
    [[nodiscard]] const std::vector<table::Assignment>& Keys() const { return keys_; }

private:
    // A column against a number.
    struct NumberTest {
        format::NumberColumn column;
        Operator op = Operator::Equal;
        double constant = 0;
        [[nodiscard]] bool Passes(const format::RowView& row) const
        {
            const std::optional<double> number = column.In(row);
            return number && Holds(*number);
        }
        [[nodiscard]] bool Holds(double number) const
        {
            switch (op) {
            case Operator::Equal:
                return number == constant;
            case Operator::NotEqual:
                return number != constant;
            case Operator::Less:
                return number < constant;
            case Operator::Greater:
                return number > constant;
            case Operator::LessOrEqual:
                return number <= constant;
            default:
                return number >= constant;
            }
        }
    };
    // A text column against one text.
    struct TextTest {
        std::size_t column = 0;
        Operator op = Operator::Equal;
        std::string constant;
    };

    void Add(const Expression& part);
    bool AddComparison(std::size_t column, Operator op, const base::Value& constant);
    void AddKey(std::size_t column, const base::Value& constant);
    [[nodiscard]] bool Passes(const TextTest& test, const format::RowView& row) const;
    [[nodiscard]] bool PassesRest(const format::RowView& row) const;

    const table::RowSource* rows_ = nullptr;
    const Environment* environment_ = nullptr;
    std::vector<NumberTest> numbers_;
    std::vector<TextTest> texts_;
    std::vector<const Expression*> others_;
    std::vector<table::Assignment> keys_;
};

// Shows the rows that a filter keeps, in storage order. Requires: nothing is changed meanwhile.
void ForEachRow(const table::RowSource& rows, const Filter& filter,
                const table::RowCursor::Visit& visit);

// The rows that a filter keeps, in storage order or against it, found one at a time as they are
// asked for.
// Requires: rows and filter outlive it.
class RowFinder {
public:
    RowFinder(const table::RowSource& rows, const Filter& filter,
              table::Direction direction = table::Direction::Forward);

    // Goes to the next row that passes; false at the end.
    [[nodiscard]] bool Next();
    [[nodiscard]] table::RowId Id() const { return cursor_ ? cursor_->Id() : stored_.id; }
    // Valid until the next call of Next.
    [[nodiscard]] const format::RowView& Row() const { return cursor_ ? cursor_->Row() : *view_; }

private:
    [[nodiscard]] bool NextByKey();

    const table::RowSource& rows_;
    const Filter& filter_;
    std::unique_ptr<table::RowCursor> cursor_;  // null when an index answered
    std::vector<table::RowId> found_;           // by an index
    std::size_t next_ = 0;
    table::StoredRow stored_;
    std::optional<format::RowView> view_;
};

}  // namespace jet::sql
