// SPDX-License-Identifier: Apache-2.0
// Aggregates: Count, Sum and their kin, gathered row by row.
#pragma once

#include "base/Value.h"
#include "jet/format/TableDefinition.h"

#include <cstdint>
#include <string_view>

namespace jet::sql {

enum class AggregateKind { Count, Sum, Avg, Min, Max, First, Last, StDev, StDevP, Var, VarP };

// Requires: IsAggregateName(name).
[[nodiscard]] AggregateKind AggregateNamed(std::string_view name);

// Whether it tells how far values lie from their mean.
[[nodiscard]] inline bool IsSpread(AggregateKind kind)
{
    return kind >= AggregateKind::StDev;
}

// Whether numbers are all that such an aggregate wants to know of values that are numbers.
[[nodiscard]] bool GathersNumbers(AggregateKind kind);

// Rule: null is passed over by all but First and Last. Over nothing, Count is 0 and the others are
//       null. Doubles are added in row order; money stays money.
class Accumulator {
public:
    Accumulator(AggregateKind kind, format::SortOrder order) : kind_(kind), order_(order) {}

    // Errors: 3464 text where a number is needed.
    void Add(const base::Value& value);
    // The same for a number that is neither null nor money; asked of every row of a scan.
    // Requires: GathersNumbers(kind).
    void AddNumber(double number)
    {
        onlyMoney_ = false;
        Gather(number);
    }
    // A row of Count(*).
    void AddRow() { ++count_; }
    [[nodiscard]] base::Value Result() const;

private:
    void AddMoney(base::Currency money);
    void Gather(double number)
    {
        ++count_;
        sum_ += number;
        if (IsSpread(kind_)) GatherSpread(number);
    }
    void GatherSpread(double number);
    [[nodiscard]] base::Value Spread() const;

    AggregateKind kind_;
    format::SortOrder order_;
    std::int32_t count_ = 0;
    base::Value kept_;  // of Min, Max, First, Last
    double sum_ = 0;
    std::int64_t money_ = 0;  // ten-thousandths, while all values are money
    bool onlyMoney_ = true;
    double mean_ = 0, squares_ = 0;  // of StDev and Var, by running differences
};

}  // namespace jet::sql
