// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Evaluator.h"

#include "base/Convert.h"
#include "base/NumberedError.h"

#include <algorithm>

namespace jet::sql {

namespace {

using base::NumberedError;
using base::Value;

// The run time's failures as an expression's: null for null and division by zero.
Value Called(const FunctionInfo& function, Arguments arguments, const Environment& environment)
{
    try {
        return function.body(arguments, environment);
    } catch (const NumberedError& error) {
        switch (error.Number()) {
        case 94:
        case 11:
            return {};
        case 13:
            throw NumberedError(3464);
        default:
            break;
        }
        if (error.Number() < 1000) throw NumberedError(3071);
        throw;
    }
}

class Evaluator {
public:
    Evaluator(const Row& row, const Environment& environment, std::span<const Value> aggregates)
        : row_(row), environment_(environment), aggregates_(aggregates)
    {
    }

    [[nodiscard]] Value Of(const Expression& e) const
    {
        switch (e.kind) {
        case ExpressionKind::Constant:
            return e.constant;
        case ExpressionKind::Name:
            return row_.Value(e.place);
        case ExpressionKind::Aggregate:
            return aggregates_[e.place];
        case ExpressionKind::Unary:
            return Unary(e);
        case ExpressionKind::Binary:
            return Binary(e);
        case ExpressionKind::Call:
            return Call(e);
        case ExpressionKind::IsNull:
            return Of(*e.operands[0]).IsNull() != e.negated;
        case ExpressionKind::In:
            return ValueOf(Negate(e, In(e)));
        case ExpressionKind::Between:
            return ValueOf(Negate(e, Between(e)));
        default:
            return ValueOf(Negate(e, Like(e)));
        }
    }

private:
    static Truth Negate(const Expression& e, Truth truth)
    {
        return e.negated ? Negation(truth) : truth;
    }

    [[nodiscard]] Value Unary(const Expression& e) const
    {
        const Value operand = Of(*e.operands[0]);
        if (e.op == Operator::Not) return ValueOf(Negation(TruthOf(operand)));
        return e.op == Operator::Negate ? Negated(operand) : operand;
    }

    [[nodiscard]] Value Binary(const Expression& e) const
    {
        if (IsLogical(e.op)) return ValueOf(Logic(e));
        const Value left = Of(*e.operands[0]);
        const Value right = Of(*e.operands[1]);
        return IsComparison(e.op) ? ValueOf(Comparison(e.op, left, right))
                                  : Calculate(e.op, left, right);
    }

    [[nodiscard]] Truth Logic(const Expression& e) const
    {
        const Truth left = TruthOf(Of(*e.operands[0]));
        // What the left side decides alone.
        if (e.op == Operator::And && left == Truth::False) return left;
        if (e.op == Operator::Or && left == Truth::True) return left;
        return Combine(e.op, left, TruthOf(Of(*e.operands[1])));
    }

    [[nodiscard]] Truth Comparison(Operator op, const Value& left, const Value& right) const
    {
        const std::optional<int> outcome = Compare(left, right, environment_.order);
        return outcome ? TruthOf(Satisfies(op, *outcome)) : Truth::Null;
    }

    [[nodiscard]] Truth In(const Expression& e) const
    {
        const Value value = Of(*e.operands[0]);
        Truth found = Truth::False;
        for (std::size_t i = 1; i < e.operands.size(); ++i) {
            const Truth equal = Comparison(Operator::Equal, value, Of(*e.operands[i]));
            if (equal == Truth::True) return equal;
            found = Combine(Operator::Or, found, equal);
        }
        return found;
    }

    [[nodiscard]] Truth Between(const Expression& e) const
    {
        const Value value = Of(*e.operands[0]);
        const Value low = Of(*e.operands[1]);
        const Value high = Of(*e.operands[2]);
        if (value.IsNull() || low.IsNull() || high.IsNull()) return Truth::Null;
        return Combine(Operator::And, Comparison(Operator::GreaterOrEqual, value, low),
                       Comparison(Operator::LessOrEqual, value, high));
    }

    [[nodiscard]] Truth Like(const Expression& e) const
    {
        const Value text = Of(*e.operands[0]);
        const Value pattern = Of(*e.operands[1]);
        if (text.IsNull() || pattern.IsNull()) return Truth::Null;
        return TruthOf(IsLike(base::TextOf(text), base::TextOf(pattern)));
    }

    [[nodiscard]] Value Call(const Expression& e) const
    {
        if (e.function->body == nullptr) return Choice(e);
        std::vector<Value> arguments;
        arguments.reserve(e.operands.size());
        for (const ExpressionPtr& operand : e.operands)
            arguments.push_back(Of(*operand));
        const bool null = std::any_of(arguments.begin(), arguments.end(),
                                      [](const Value& value) { return value.IsNull(); });
        if (null && e.function->onNull == OnNull::AnswersNull) return {};
        return Called(*e.function, arguments, environment_);
    }

    // IIf, Switch and Choose.
    [[nodiscard]] Value Choice(const Expression& e) const
    {
        if (e.function->name == "IIf")
            return Of(*e.operands[TruthOf(Of(*e.operands[0])) == Truth::True ? 1 : 2]);
        if (e.function->name == "Switch") {
            for (std::size_t i = 0; i + 1 < e.operands.size(); i += 2)
                if (TruthOf(Of(*e.operands[i])) == Truth::True) return Of(*e.operands[i + 1]);
            return {};
        }
        const std::optional<double> chosen = NumberIn(Of(*e.operands[0]));
        if (!chosen || !(*chosen >= 1) || *chosen >= static_cast<double>(e.operands.size()))
            return {};
        return Of(*e.operands[static_cast<std::size_t>(*chosen)]);
    }

    const Row& row_;
    const Environment& environment_;
    std::span<const Value> aggregates_;
};

}  // namespace

Value Evaluate(const Expression& expression, const Row& row, const Environment& environment,
               std::span<const Value> aggregates)
{
    return Evaluator(row, environment, aggregates).Of(expression);
}

}  // namespace jet::sql
