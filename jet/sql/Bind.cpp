// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Bind.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/Functions.h"

#include <algorithm>

namespace jet::sql {

namespace {

using base::NumberedError;

ValueKind KindOf(const base::Value& value)
{
    if (value.IsNull()) return ValueKind::Null;
    if (value.IsText()) return ValueKind::Text;
    if (value.IsDate()) return ValueKind::Date;
    if (value.As<bool>() != nullptr) return ValueKind::Boolean;
    return value.IsNumber() ? ValueKind::Number : ValueKind::Any;
}

bool IsNumeric(ValueKind kind)
{
    return kind == ValueKind::Number || kind == ValueKind::Date || kind == ValueKind::Boolean;
}

// Text meets text only, and the others meet each other.
void RequireComparable(ValueKind left, ValueKind right)
{
    const bool clash = (left == ValueKind::Text && IsNumeric(right)) ||
                       (right == ValueKind::Text && IsNumeric(left));
    if (clash) throw NumberedError(3464);
}

void RequireLogical(ValueKind kind)
{
    if (kind == ValueKind::Text) throw NumberedError(3464);
}

// The kind that either of two branches gives.
ValueKind Common(ValueKind left, ValueKind right)
{
    if (left == right || right == ValueKind::Null) return left;
    return left == ValueKind::Null ? right : ValueKind::Any;
}

// The name of the first unknown function; null when all are joined.
const std::string* JoinFunctions(Expression& expression)
{
    if (expression.kind == ExpressionKind::Call) {
        expression.function = FindFunction(expression.name);
        if (expression.function == nullptr) return &expression.name;
    }
    for (const ExpressionPtr& operand : expression.operands)
        if (const std::string* const unknown = JoinFunctions(*operand)) return unknown;
    return nullptr;
}

class TypeChecker {
public:
    explicit TypeChecker(const Scope& scope) : scope_(scope) {}

    ValueKind Check(Expression& e)
    {
        std::vector<ValueKind> kinds;
        kinds.reserve(e.operands.size());
        for (const ExpressionPtr& operand : e.operands)
            kinds.push_back(Check(*operand));
        e.type = Result(e, kinds);
        return e.type;
    }

private:
    ValueKind Result(const Expression& e, const std::vector<ValueKind>& kinds) const
    {
        switch (e.kind) {
        case ExpressionKind::Constant:
            return KindOf(e.constant);
        case ExpressionKind::Name:
            return KindAt(e.place);
        case ExpressionKind::Unary:
            if (e.op != Operator::Not) return kinds[0];
            RequireLogical(kinds[0]);
            return ValueKind::Boolean;
        case ExpressionKind::Binary:
            return OfBinary(e.op, kinds[0], kinds[1]);
        case ExpressionKind::In:
        case ExpressionKind::Between:
            for (const ValueKind kind : kinds)
                RequireComparable(kinds[0], kind);
            return ValueKind::Boolean;
        case ExpressionKind::Call:
            return OfCall(*e.function, kinds);
        case ExpressionKind::Aggregate:
            return OfAggregate(e.name, kinds);
        default:
            return ValueKind::Boolean;
        }
    }

    [[nodiscard]] ValueKind KindAt(std::size_t place) const
    {
        for (const Scope::Field& field : scope_.fields)
            if (field.place == place) return field.kind;
        return ValueKind::Any;
    }

    static ValueKind OfBinary(Operator op, ValueKind left, ValueKind right)
    {
        if (IsComparison(op)) {
            RequireComparable(left, right);
            return ValueKind::Boolean;
        }
        if (IsLogical(op)) {
            RequireLogical(left);
            RequireLogical(right);
            return ValueKind::Boolean;
        }
        switch (op) {
        case Operator::Concatenate:
            return ValueKind::Text;
        case Operator::Plus:
        case Operator::Minus:
            return OfSum(op, left, right);
        default:
            return ValueKind::Number;
        }
    }

    static ValueKind OfSum(Operator op, ValueKind left, ValueKind right)
    {
        if (left == ValueKind::Any || right == ValueKind::Any) return ValueKind::Any;
        if (left == ValueKind::Null || right == ValueKind::Null) return ValueKind::Null;
        if (op == Operator::Plus && left == ValueKind::Text && right == ValueKind::Text)
            return ValueKind::Text;
        const bool oneDate = (left == ValueKind::Date) != (right == ValueKind::Date);
        const bool dates = left == ValueKind::Date && op == Operator::Plus;
        return oneDate || dates ? ValueKind::Date : ValueKind::Number;
    }

    static ValueKind OfCall(const FunctionInfo& function, const std::vector<ValueKind>& kinds)
    {
        if (function.body != nullptr) return function.result;
        if (function.name == "Switch") {
            ValueKind common = kinds[1];
            for (std::size_t i = 3; i < kinds.size(); i += 2)
                common = Common(common, kinds[i]);
            return common;
        }
        // IIf and Choose: the first argument decides, the others are the branches.
        ValueKind common = kinds[1];
        for (std::size_t i = 2; i < kinds.size(); ++i)
            common = Common(common, kinds[i]);
        return common;
    }

    static ValueKind OfAggregate(std::string_view name, const std::vector<ValueKind>& kinds)
    {
        for (const std::string_view keeps : {"Min", "Max", "First", "Last"})
            if (base::SameName(name, keeps)) return kinds[0];
        if (!base::SameName(name, "Count")) RequireLogical(kinds[0]);
        return ValueKind::Number;
    }

    const Scope& scope_;
};

}  // namespace

const Scope::Field* Scope::Find(std::string_view qualifier, std::string_view name) const
{
    if (!qualifier.empty() && !table.empty() && !base::SameName(qualifier, table)) return nullptr;
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const Field& field) {
        return base::SameName(field.name, name);
    });
    return found == fields.end() ? nullptr : &*found;
}

ValueKind KindOf(format::ColumnType type)
{
    switch (type) {
    case format::ColumnType::Boolean:
        return ValueKind::Boolean;
    case format::ColumnType::Date:
        return ValueKind::Date;
    case format::ColumnType::Text:
    case format::ColumnType::Memo:
        return ValueKind::Text;
    case format::ColumnType::Byte:
    case format::ColumnType::Integer:
    case format::ColumnType::Long:
    case format::ColumnType::Currency:
    case format::ColumnType::Single:
    case format::ColumnType::Double:
    case format::ColumnType::Numeric:
        return ValueKind::Number;
    default:
        return ValueKind::Any;
    }
}

Scope ScopeOf(const format::TableDefinition& table, std::string_view name)
{
    Scope scope{std::string(name), {}};
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        scope.fields.push_back({table.columns[i].name, KindOf(table.columns[i].type), i});
    return scope;
}

void BindFunctions(Expression& expression)
{
    if (const std::string* const unknown = JoinFunctions(expression))
        throw NumberedError(3085, {*unknown});
}

void BindNames(Expression& expression, const Scope& scope, std::vector<std::string>& unknown)
{
    for (const ExpressionPtr& operand : expression.operands)
        BindNames(*operand, scope, unknown);
    if (expression.kind != ExpressionKind::Name) return;
    if (const Scope::Field* const field = scope.Find(expression.qualifier, expression.name)) {
        expression.place = field->place;
        return;
    }
    const std::string name = expression.qualifier.empty()
                                 ? expression.name
                                 : expression.qualifier + "." + expression.name;
    const bool known = std::any_of(unknown.begin(), unknown.end(), [&](const std::string& other) {
        return base::SameName(other, name);
    });
    if (!known) unknown.push_back(name);
}

ValueKind BindTypes(Expression& expression, const Scope& scope)
{
    return TypeChecker(scope).Check(expression);
}

void BindCondition(Expression& expression, const Scope& scope)
{
    RequireLogical(BindTypes(expression, scope));
}

void BindCriteria(Expression& expression, const Scope& scope)
{
    if (const Expression* const aggregate = FindAggregate(expression))
        throw NumberedError(3095, {aggregate->text});
    BindFunctions(expression);
    std::vector<std::string> unknown;
    BindNames(expression, scope, unknown);
    if (!unknown.empty()) throw NumberedError(3070, {unknown.front()});
    BindCondition(expression, scope);
}

void BindKept(Expression& expression, const Scope& scope, std::string_view field,
              std::string_view table)
{
    if (const std::string* const unknown = JoinFunctions(expression))
        throw NumberedError(3388, {std::string(field.empty() ? table : field), *unknown});
    std::vector<std::string> unknown;
    BindNames(expression, scope, unknown);
    if (const Expression* const aggregate = FindAggregate(expression))
        unknown.push_back(aggregate->text);
    if (!unknown.empty()) throw NumberedError(3344, {unknown.front(), std::string(table)});
}

const Expression* FindAggregate(const Expression& expression)
{
    if (expression.kind == ExpressionKind::Aggregate) return &expression;
    for (const ExpressionPtr& operand : expression.operands)
        if (const Expression* const found = FindAggregate(*operand)) return found;
    return nullptr;
}

}  // namespace jet::sql
