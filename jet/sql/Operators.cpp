// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Operators.h"

#include "base/Convert.h"
#include "base/NumberedError.h"
#include "jet/format/SortKey.h"

#include <cmath>
#include <limits>

namespace jet::sql {

namespace {

using base::Currency;
using base::Date;
using base::NumberedError;
using base::Value;

// A text takes part in arithmetic as the number it spells.
double OperandOf(const Value& value)
{
    if (const std::optional<double> number = NumberIn(value)) return *number;
    if (!value.IsText()) throw NumberedError(3464);
    try {
        return base::ToDouble(value);
    } catch (const NumberedError&) {
        throw NumberedError(3464);
    }
}

// `\` and Mod work on integers.
std::optional<std::int64_t> IntegerOf(const Value& value)
{
    const double number = base::RoundHalfEven(OperandOf(value));
    if (std::fabs(number) > 9.0e15) throw NumberedError(3071);
    return static_cast<std::int64_t>(number);
}

bool IsInteger(const Value& value)
{
    return value.As<bool>() != nullptr || value.As<std::uint8_t>() != nullptr ||
           value.As<std::int16_t>() != nullptr || value.As<std::int32_t>() != nullptr;
}

Value Finite(double number)
{
    if (!std::isfinite(number)) throw NumberedError(3071);
    return number;
}

// An integer where both operands are and the result fits, otherwise a double.
Value NumberResult(const Value& left, const Value& right, double result)
{
    constexpr double kSmallest = std::numeric_limits<std::int32_t>::min();
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    if (IsInteger(left) && IsInteger(right) && result >= kSmallest && result <= kLargest)
        return static_cast<std::int32_t>(result);
    return Finite(result);
}

Value Sum(const Value& left, const Value& right, bool minus)
{
    if (!minus && left.IsText() && right.IsText())
        return *left.As<std::string>() + *right.As<std::string>();
    const auto* const a = left.As<Currency>();
    const auto* const b = right.As<Currency>();
    if (a != nullptr && b != nullptr) {
        std::int64_t sum = 0;
        const bool overflows = minus ? __builtin_sub_overflow(a->scaled, b->scaled, &sum)
                                     : __builtin_add_overflow(a->scaled, b->scaled, &sum);
        if (overflows) throw NumberedError(3071);
        return Currency{sum};
    }
    const double result = OperandOf(left) + (minus ? -OperandOf(right) : OperandOf(right));
    // A date and a number of days is a date; between two dates there is a number of days.
    if (left.IsDate() != right.IsDate() || (left.IsDate() && !minus)) return Date{result};
    return NumberResult(left, right, result);
}

Value IntegerDivision(const Value& left, const Value& right, bool remainder)
{
    const std::int64_t a = *IntegerOf(left);
    const std::int64_t b = *IntegerOf(right);
    if (b == 0) return {};
    const std::int64_t result = remainder ? a % b : a / b;
    if (result == static_cast<std::int32_t>(result)) return static_cast<std::int32_t>(result);
    return static_cast<double>(result);
}

int Sign(double left, double right)
{
    return (left > right) - (left < right);
}

template <class T>
std::optional<int> CompareSame(const Value& left, const Value& right)
{
    const T* const a = left.As<T>();
    const T* const b = right.As<T>();
    if (a == nullptr || b == nullptr) return std::nullopt;
    return (*a > *b) - (*a < *b);
}

}  // namespace

std::optional<double> NumberIn(const Value& value)
{
    struct Visitor {
        std::optional<double> operator()(bool b) const { return b ? -1 : 0; }
        std::optional<double> operator()(std::uint8_t n) const { return n; }
        std::optional<double> operator()(std::int16_t n) const { return n; }
        std::optional<double> operator()(std::int32_t n) const { return n; }
        std::optional<double> operator()(Currency c) const
        {
            return static_cast<double>(c.scaled) / 10000;
        }
        std::optional<double> operator()(float n) const { return n; }
        std::optional<double> operator()(double n) const { return n; }
        std::optional<double> operator()(Date d) const { return d.days; }
        std::optional<double> operator()(const base::Decimal& d) const
        {
            double number = 0;
            for (std::size_t i = d.magnitude.size(); i-- > 0;)
                number = number * 4294967296.0 + d.magnitude[i];
            number /= std::pow(10.0, d.scale);
            return d.negative ? -number : number;
        }
        std::optional<double> operator()(const base::Null&) const { return std::nullopt; }
        std::optional<double> operator()(const std::string&) const { return std::nullopt; }
        std::optional<double> operator()(const base::Bytes&) const { return std::nullopt; }
        std::optional<double> operator()(const base::Guid&) const { return std::nullopt; }
    };
    return std::visit(Visitor{}, value.Content());
}

Truth TruthOf(const Value& value)
{
    if (value.IsNull()) return Truth::Null;
    const std::optional<double> number = NumberIn(value);
    if (!number) throw NumberedError(3464);
    return TruthOf(*number != 0);
}

Value ValueOf(Truth truth)
{
    if (truth == Truth::Null) return {};
    return truth == Truth::True;
}

Truth Negation(Truth truth)
{
    if (truth == Truth::Null) return truth;
    return truth == Truth::True ? Truth::False : Truth::True;
}

Truth Combine(Operator op, Truth left, Truth right)
{
    switch (op) {
    case Operator::And:
        if (left == Truth::False || right == Truth::False) return Truth::False;
        return left == Truth::Null || right == Truth::Null ? Truth::Null : Truth::True;
    case Operator::Or:
        return Negation(Combine(Operator::And, Negation(left), Negation(right)));
    case Operator::Imp:
        return Combine(Operator::Or, Negation(left), right);
    case Operator::Eqv:
        return Negation(Combine(Operator::Xor, left, right));
    default:
        if (left == Truth::Null || right == Truth::Null) return Truth::Null;
        return TruthOf(left != right);
    }
}

std::optional<int> Compare(const Value& left, const Value& right, format::SortOrder order)
{
    if (left.IsNull() || right.IsNull()) return std::nullopt;
    if (left.IsText() && right.IsText()) {
        const auto outcome =
            format::CompareText(*left.As<std::string>(), *right.As<std::string>(), order);
        return (outcome > 0) - (outcome < 0);
    }
    if (const auto outcome = CompareSame<Currency>(left, right)) return outcome;
    if (const auto outcome = CompareSame<base::Bytes>(left, right)) return outcome;
    if (const auto outcome = CompareSame<base::Guid>(left, right)) return outcome;
    const std::optional<double> a = NumberIn(left);
    const std::optional<double> b = NumberIn(right);
    if (!a || !b) throw NumberedError(3464);
    return Sign(*a, *b);
}

bool Satisfies(Operator op, int outcome)
{
    switch (op) {
    case Operator::Equal:
        return outcome == 0;
    case Operator::NotEqual:
        return outcome != 0;
    case Operator::Less:
        return outcome < 0;
    case Operator::Greater:
        return outcome > 0;
    case Operator::LessOrEqual:
        return outcome <= 0;
    default:
        return outcome >= 0;
    }
}

Value Calculate(Operator op, const Value& left, const Value& right)
{
    if (op == Operator::Concatenate) {
        if (left.IsNull() && right.IsNull()) return {};
        return base::TextOf(left) + base::TextOf(right);
    }
    if (left.IsNull() || right.IsNull()) return {};
    switch (op) {
    case Operator::Plus:
        return Sum(left, right, false);
    case Operator::Minus:
        return Sum(left, right, true);
    case Operator::Times:
        return NumberResult(left, right, OperandOf(left) * OperandOf(right));
    case Operator::Divide: {
        const double divisor = OperandOf(right);
        if (divisor == 0) return {};
        return Finite(OperandOf(left) / divisor);
    }
    case Operator::IntegerDivide:
        return IntegerDivision(left, right, false);
    case Operator::Mod:
        return IntegerDivision(left, right, true);
    default:
        return Finite(std::pow(OperandOf(left), OperandOf(right)));
    }
}

Value Negated(const Value& value)
{
    if (value.IsNull()) return {};
    if (const auto* const money = value.As<Currency>())
        return Calculate(Operator::Minus, Currency{}, *money);
    if (const auto* const date = value.As<Date>()) return Date{-date->days};
    return NumberResult(value, value, -OperandOf(value));
}

}  // namespace jet::sql
