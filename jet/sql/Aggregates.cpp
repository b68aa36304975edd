// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Aggregates.h"

#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/Operators.h"

#include <array>
#include <cmath>
#include <utility>

namespace jet::sql {

namespace {

constexpr std::array<std::pair<std::string_view, AggregateKind>, 11> kKinds{{
    {"Count", AggregateKind::Count},
    {"Sum", AggregateKind::Sum},
    {"Avg", AggregateKind::Avg},
    {"Min", AggregateKind::Min},
    {"Max", AggregateKind::Max},
    {"First", AggregateKind::First},
    {"Last", AggregateKind::Last},
    {"StDev", AggregateKind::StDev},
    {"StDevP", AggregateKind::StDevP},
    {"Var", AggregateKind::Var},
    {"VarP", AggregateKind::VarP},
}};

}  // namespace

AggregateKind AggregateNamed(std::string_view name)
{
    for (const auto& [known, kind] : kKinds)
        if (base::SameName(known, name)) return kind;
    return AggregateKind::Count;
}

bool GathersNumbers(AggregateKind kind)
{
    return kind == AggregateKind::Count || kind == AggregateKind::Sum ||
           kind == AggregateKind::Avg || IsSpread(kind);
}

void Accumulator::Add(const base::Value& value)
{
    const bool first = count_ == 0;
    if (kind_ == AggregateKind::First || kind_ == AggregateKind::Last) {
        if (first || kind_ == AggregateKind::Last) kept_ = value;
        ++count_;
        return;
    }
    if (value.IsNull()) return;
    switch (kind_) {
    case AggregateKind::Count:
        ++count_;
        return;
    case AggregateKind::Min:
        ++count_;
        if (first || *Compare(value, kept_, order_) < 0) kept_ = value;
        return;
    case AggregateKind::Max:
        ++count_;
        if (first || *Compare(value, kept_, order_) > 0) kept_ = value;
        return;
    default:
        break;
    }
    const std::optional<double> number = NumberIn(value);
    if (!number) throw base::NumberedError(3464);
    if (const auto* const money = value.As<base::Currency>())
        AddMoney(*money);
    else
        onlyMoney_ = false;
    Gather(*number);
}

void Accumulator::AddMoney(base::Currency money)
{
    onlyMoney_ = onlyMoney_ && !__builtin_add_overflow(money_, money.scaled, &money_);
}

void Accumulator::GatherSpread(double number)
{
    const double distance = number - mean_;
    mean_ += distance / count_;
    squares_ += distance * (number - mean_);
}

base::Value Accumulator::Spread() const
{
    const bool sample = kind_ == AggregateKind::StDev || kind_ == AggregateKind::Var;
    const bool root = kind_ == AggregateKind::StDev || kind_ == AggregateKind::StDevP;
    const int divisor = sample ? count_ - 1 : count_;
    if (divisor < 1) return {};
    const double variance = squares_ / divisor;
    return root ? std::sqrt(variance) : variance;
}

base::Value Accumulator::Result() const
{
    if (kind_ == AggregateKind::Count) return count_;
    if (count_ == 0) return {};
    switch (kind_) {
    case AggregateKind::Sum:
        if (onlyMoney_) return base::Currency{money_};
        return sum_;
    case AggregateKind::Avg:
        if (onlyMoney_)
            return base::Currency{static_cast<std::int64_t>(
                base::RoundHalfEven(static_cast<double>(money_) / count_))};
        return sum_ / count_;
    case AggregateKind::StDev:
    case AggregateKind::StDevP:
    case AggregateKind::Var:
    case AggregateKind::VarP:
        return Spread();
    default:
        return kept_;
    }
}

}  // namespace jet::sql
