// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Filter.h"

#include "jet/format/SortKey.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace jet::sql {

namespace {

using format::ColumnType;

// Field and constant exchanged.
Operator Mirrored(Operator op)
{
    switch (op) {
    case Operator::Less:
        return Operator::Greater;
    case Operator::Greater:
        return Operator::Less;
    case Operator::LessOrEqual:
        return Operator::GreaterOrEqual;
    case Operator::GreaterOrEqual:
        return Operator::LessOrEqual;
    default:
        return op;
    }
}

// A constant as it is written, a negative number too; nothing for any other expression.
std::optional<base::Value> ConstantOf(const Expression& expression)
{
    if (expression.kind == ExpressionKind::Constant) return expression.constant;
    if (expression.kind != ExpressionKind::Unary || expression.op != Operator::Negate)
        return std::nullopt;
    const Expression& operand = *expression.operands[0];
    if (operand.kind != ExpressionKind::Constant || !operand.constant.IsNumber())
        return std::nullopt;
    return Negated(operand.constant);
}

// The constant as a value of the column's own type, when it is one exactly.
std::optional<base::Value> KeyOf(ColumnType type, double constant)
{
    const auto fits = [&](double low, double high) {
        return constant >= low && constant <= high && constant == std::floor(constant);
    };
    switch (type) {
    case ColumnType::Long:
        if (!fits(std::numeric_limits<std::int32_t>::min(),
                  std::numeric_limits<std::int32_t>::max()))
            return std::nullopt;
        return base::Value(static_cast<std::int32_t>(constant));
    case ColumnType::Integer:
        if (!fits(std::numeric_limits<std::int16_t>::min(),
                  std::numeric_limits<std::int16_t>::max()))
            return std::nullopt;
        return base::Value(static_cast<std::int16_t>(constant));
    case ColumnType::Double:
        return base::Value(constant);
    case ColumnType::Date:
        return base::Value(base::Date{constant});
    default:
        return std::nullopt;
    }
}

}  // namespace

Filter::Filter(const Expression& condition, const table::RowSource& rows,
               const Environment& environment)
    : rows_(&rows), environment_(&environment)
{
    Add(condition);
}

void Filter::Add(const Expression& part)
{
    if (part.kind == ExpressionKind::Binary && part.op == Operator::And) {
        Add(*part.operands[0]);
        Add(*part.operands[1]);
        return;
    }
    const auto isName = [](const Expression& e) { return e.kind == ExpressionKind::Name; };
    if (isName(part) && AddComparison(part.place, Operator::NotEqual, std::int32_t{0})) return;
    if (part.kind == ExpressionKind::Binary && IsComparison(part.op)) {
        const Expression& left = *part.operands[0];
        const Expression& right = *part.operands[1];
        const std::optional<base::Value> first = ConstantOf(left), second = ConstantOf(right);
        if (isName(left) && second && AddComparison(left.place, part.op, *second)) return;
        if (first && isName(right) && AddComparison(right.place, Mirrored(part.op), *first)) return;
    }
    others_.push_back(&part);
}

bool Filter::AddComparison(std::size_t column, Operator op, const base::Value& constant)
{
    const format::TableDefinition& table = rows_->Definition();
    if (column >= table.columns.size()) return false;
    if (const auto tested = format::NumberColumn::Of(table, column)) {
        const std::optional<double> number = NumberIn(constant);
        if (!number) return false;
        numbers_.push_back({*tested, op, *number});
    } else if (table.columns[column].type == ColumnType::Text && constant.IsText()) {
        texts_.push_back({column, op, *constant.As<std::string>()});
    } else {
        return false;
    }
    if (op == Operator::Equal) AddKey(column, constant);
    return true;
}

void Filter::AddKey(std::size_t column, const base::Value& constant)
{
    if (constant.IsText()) {
        keys_.push_back({column, constant});
    } else if (auto key = KeyOf(rows_->Definition().columns[column].type, *NumberIn(constant))) {
        keys_.push_back({column, std::move(*key)});
    }
}

bool Filter::Passes(const TextTest& test, const format::RowView& row) const
{
    const base::Value value = rows_->ValueOf(row, test.column);
    const auto* const text = value.As<std::string>();
    if (text == nullptr) return false;
    if (test.op == Operator::Equal && *text == test.constant) return true;
    const auto outcome = format::CompareText(*text, test.constant, environment_->order);
    return Satisfies(test.op, (outcome > 0) - (outcome < 0));
}

bool Filter::PassesRest(const format::RowView& row) const
{
    for (const TextTest& test : texts_)
        if (!Passes(test, row)) return false;
    if (others_.empty()) return true;
    const StoredRowValues values(*rows_, row);
    return std::all_of(others_.begin(), others_.end(), [&](const Expression* part) {
        return TruthOf(Evaluate(*part, values, *environment_)) == Truth::True;
    });
}

namespace {

// The rows that an index of the file finds for one of the filter's keys; nothing when none does.
std::optional<std::vector<table::RowId>> FindByIndex(const table::RowSource& rows,
                                                     const Filter& filter)
{
    for (const table::Assignment& key : filter.Keys())
        if (auto found = rows.FindByKey({&key, 1})) return found;
    return std::nullopt;
}

}  // namespace

void ForEachRow(const table::RowSource& rows, const Filter& filter,
                const table::RowCursor::Visit& visit)
{
    if (const auto found = FindByIndex(rows, filter)) {
        for (const table::RowId id : *found) {
            const std::optional<table::StoredRow> stored = rows.Fetch(id);
            if (!stored) continue;
            const format::RowView row = rows.View(*stored);
            if (filter.Passes(row)) visit(id, row);
        }
        return;
    }
    const auto cursor = rows.ScanFor(filter.Keys(), table::Direction::Forward);
    if (filter.IsEmpty()) return cursor->ForEach(visit);
    cursor->ForEach([&](table::RowId id, const format::RowView& row) {
        if (filter.Passes(row)) visit(id, row);
    });
}

RowFinder::RowFinder(const table::RowSource& rows, const Filter& filter, table::Direction direction)
    : rows_(rows), filter_(filter)
{
    if (auto found = FindByIndex(rows, filter)) {
        found_ = std::move(*found);
        if (direction == table::Direction::Backward) std::reverse(found_.begin(), found_.end());
    } else {
        cursor_ = rows.ScanFor(filter.Keys(), direction);
    }
}

bool RowFinder::Next()
{
    if (!cursor_) return NextByKey();
    while (cursor_->Next())
        if (filter_.Passes(cursor_->Row())) return true;
    return false;
}

bool RowFinder::NextByKey()
{
    while (next_ < found_.size()) {
        std::optional<table::StoredRow> row = rows_.Fetch(found_[next_++]);
        if (!row) continue;
        stored_ = std::move(*row);
        view_.emplace(rows_.View(stored_));
        if (filter_.Passes(*view_)) return true;
    }
    return false;
}

}  // namespace jet::sql
