// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Query.h"

#include "base/NumberedError.h"
#include "base/Text.h"

#include <algorithm>

namespace jet::sql {

namespace {

using base::NumberedError;
using format::ColumnType;

constexpr int kFirstUnnamed = 1000;  // Expr1000, Expr1001 ...

bool Names(const Expression& expression, std::string_view name)
{
    if (expression.kind == ExpressionKind::Name && expression.qualifier.empty() &&
        base::SameName(expression.name, name))
        return true;
    return std::any_of(expression.operands.begin(), expression.operands.end(),
                       [&](const ExpressionPtr& part) { return Names(*part, name); });
}

// Whether two bound expressions say the same.
bool Same(const Expression& a, const Expression& b)
{
    if (a.kind != b.kind || a.op != b.op || a.negated != b.negated || a.place != b.place ||
        a.function != b.function || !(a.constant == b.constant))
        return false;
    return std::equal(a.operands.begin(), a.operands.end(), b.operands.begin(), b.operands.end(),
                      [](const ExpressionPtr& x, const ExpressionPtr& y) { return Same(*x, *y); });
}

// Whether an expression has one value for all rows of a group.
bool IsOnePerGroup(const Expression& expression, const std::vector<ExpressionPtr>& groupBy)
{
    if (expression.kind == ExpressionKind::Aggregate) return true;
    const auto isKey = [&](const ExpressionPtr& key) { return Same(*key, expression); };
    if (std::any_of(groupBy.begin(), groupBy.end(), isKey)) return true;
    if (expression.kind == ExpressionKind::Name) return false;
    return std::all_of(expression.operands.begin(), expression.operands.end(),
                       [&](const ExpressionPtr& part) { return IsOnePerGroup(*part, groupBy); });
}

ColumnType TypeOf(const Expression& expression, const TablePtr& table)
{
    const bool aggregate = expression.kind == ExpressionKind::Aggregate;
    if (aggregate && base::SameName(expression.name, "Count")) return ColumnType::Long;
    if (aggregate) {
        const ColumnType operand = TypeOf(*expression.operands[0], table);
        return expression.type == ValueKind::Number && operand != ColumnType::Currency
                   ? ColumnType::Double
                   : operand;
    }
    if (expression.kind == ExpressionKind::Name)
        return table->rows->Definition().columns[expression.place].type;
    switch (expression.type) {
    case ValueKind::Number:
        return ColumnType::Double;
    case ValueKind::Date:
        return ColumnType::Date;
    case ValueKind::Boolean:
        return ColumnType::Boolean;
    default:
        return ColumnType::Text;
    }
}

void CheckAlias(const SelectItem& item, const std::vector<OutputField>& fields)
{
    if (item.alias.empty()) return;
    if (Names(*item.expression, item.alias)) throw NumberedError(3103, {item.alias});
    for (const OutputField& field : fields)
        if (base::SameName(field.name, item.alias)) throw NumberedError(3062, {item.alias});
}

}  // namespace

Query::Query(SelectStatement statement, const Session& session) : statement_(std::move(statement))
{
    Scope scope;
    environment_.now = session.now;
    if (statement_.from) {
        table_ = session.open(statement_.from->name);
        if (!table_) throw NumberedError(3078, {statement_.from->name});
        environment_ = EnvironmentFor(session, table_->rows->Definition());
        const TableName& from = *statement_.from;
        scope = ScopeOf(table_->rows->Definition(), from.alias.empty() ? from.name : from.alias);
    }
    BindEverything(scope);
    AddFields(scope);
    AddSortKeys();
    if (grouped_) CheckGrouping();
    if (statement_.where.expression)
        filter_ = Filter(*statement_.where.expression, *table_->rows, environment_);
}

Query::Query(TablePtr table, const Session& session)
    : environment_(EnvironmentFor(session, table->rows->Definition())), table_(std::move(table))
{
    statement_.items.emplace_back();
    statement_.items.back().star = true;
    AddFields({});
}

// The faults in the order in which they count: functions, names, aggregates, types.
void Query::BindEverything(const Scope& scope)
{
    std::vector<Expression*> mayAggregate;
    for (const SelectItem& item : statement_.items)
        if (item.expression) mayAggregate.push_back(item.expression.get());
    if (statement_.having.expression) mayAggregate.push_back(statement_.having.expression.get());
    std::vector<Expression*> all = mayAggregate;
    for (const ExpressionPtr& key : statement_.groupBy)
        all.push_back(key.get());
    for (const OrderItem& item : statement_.orderBy)
        all.push_back(item.expression.get());
    if (statement_.where.expression) all.push_back(statement_.where.expression.get());

    for (Expression* const expression : all)
        BindFunctions(*expression);
    std::vector<std::string> unknown;
    for (Expression* const expression : all)
        BindNames(*expression, scope, unknown);
    if (!unknown.empty()) throw NumberedError(3061, {std::to_string(unknown.size())});
    if (statement_.where.expression && FindAggregate(*statement_.where.expression) != nullptr)
        throw NumberedError(3096, {statement_.where.text});
    for (Expression* const expression : mayAggregate)
        CollectAggregates(*expression);
    grouped_ = !statement_.groupBy.empty() || statement_.having.expression || !aggregates_.empty();
    for (const OrderItem& item : statement_.orderBy) {
        if (!grouped_ && FindAggregate(*item.expression) != nullptr)
            throw NumberedError(3097, {item.expression->text});
        CollectAggregates(*item.expression);
    }
    for (Expression* const expression : all)
        BindTypes(*expression, scope);
    if (statement_.where.expression) BindCondition(*statement_.where.expression, scope);
    if (statement_.having.expression) BindCondition(*statement_.having.expression, scope);
}

void Query::CollectAggregates(Expression& expression)
{
    if (expression.kind != ExpressionKind::Aggregate) {
        for (const ExpressionPtr& part : expression.operands)
            CollectAggregates(*part);
        return;
    }
    for (const ExpressionPtr& part : expression.operands)
        if (FindAggregate(*part) != nullptr) throw NumberedError(3095, {expression.text});
    expression.place = aggregates_.size();
    aggregates_.push_back(&expression);
}

void Query::AddFields(const Scope& scope)
{
    int unnamed = kFirstUnnamed;
    for (const SelectItem& item : statement_.items) {
        if (item.star) {
            if (!item.qualifier.empty() && !base::SameName(item.qualifier, scope.table))
                throw NumberedError(3078, {item.qualifier});
            const auto& columns = table_->rows->Definition().columns;
            for (std::size_t i = 0; i < columns.size(); ++i)
                fields_.push_back({columns[i].name, i, nullptr, columns[i].type});
            continue;
        }
        CheckAlias(item, fields_);
        const Expression& expression = *item.expression;
        OutputField field{item.alias, std::nullopt, &expression, TypeOf(expression, table_)};
        if (expression.kind == ExpressionKind::Name) {
            field.column = expression.place;
            if (item.alias.empty())
                field.name = table_->rows->Definition().columns[expression.place].name;
        }
        if (field.name.empty()) field.name = "Expr" + std::to_string(unnamed++);
        fields_.push_back(std::move(field));
    }
}

void Query::AddSortKeys()
{
    for (const OrderItem& item : statement_.orderBy) {
        SortKey key{item.expression.get(), std::nullopt, item.descending};
        if (const auto* const place = item.expression->constant.As<std::int32_t>();
            place != nullptr && item.expression->kind == ExpressionKind::Constant) {
            if (*place < 1 || static_cast<std::size_t>(*place) > fields_.size())
                throw NumberedError(3138);
            key.output = static_cast<std::size_t>(*place) - 1;
        }
        sortKeys_.push_back(key);
    }
}

void Query::CheckGrouping() const
{
    const auto check = [&](const Expression& expression) {
        if (!IsOnePerGroup(expression, statement_.groupBy))
            throw NumberedError(3122, {expression.text});
    };
    for (const SelectItem& item : statement_.items) {
        if (item.star) throw NumberedError(3122, {fields_.front().name});
        check(*item.expression);
    }
    if (statement_.having.expression) check(*statement_.having.expression);
    for (const OrderItem& item : statement_.orderBy)
        check(*item.expression);
}

bool Query::GivesTableRows() const
{
    return table_ != nullptr && !grouped_ && !statement_.distinct;
}

bool Query::InStorageOrder() const
{
    return sortKeys_.empty() && !statement_.top;
}

base::Value Query::ValueOf(const format::RowView& row, std::size_t field) const
{
    const OutputField& output = fields_[field];
    if (output.column) return table_->rows->ValueOf(row, *output.column);
    return Evaluate(*output.expression, StoredRowValues(*table_->rows, row), environment_);
}

}  // namespace jet::sql
