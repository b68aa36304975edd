// SPDX-License-Identifier: Apache-2.0
// Operators: comparison, logic with three values, and arithmetic, on values.
#pragma once

#include "base/Value.h"
#include "jet/format/TableDefinition.h"
#include "jet/sql/Ast.h"

#include <optional>
#include <string_view>

namespace jet::sql {

enum class Truth { False, True, Null };

// Null is Null; a number is true when it is not 0. Errors: 3464 for text.
[[nodiscard]] Truth TruthOf(const base::Value& value);
[[nodiscard]] base::Value ValueOf(Truth truth);
[[nodiscard]] inline Truth TruthOf(bool value)
{
    return value ? Truth::True : Truth::False;
}
// Not, And, Or, Xor, Eqv, Imp.
[[nodiscard]] Truth Negation(Truth truth);
[[nodiscard]] Truth Combine(Operator op, Truth left, Truth right);

// The number that a value takes part with in comparisons and arithmetic: a boolean as -1 or 0, a
// date as its days; nothing for null, text and bytes.
[[nodiscard]] std::optional<double> NumberIn(const base::Value& value);

// Below 0, 0 or above 0; nothing when either is null.
// Errors: 3464 for a text against a number, date or boolean.
[[nodiscard]] std::optional<int> Compare(const base::Value& left, const base::Value& right,
                                         format::SortOrder order);
// Whether an outcome of Compare satisfies =, <>, <, >, <= or >=.
[[nodiscard]] bool Satisfies(Operator op, int outcome);

// ^ * / \ Mod + - & and the signs.
// Rule:   null with anything is null, but for &. Division by zero is null.
// Errors: 3464 text that is no number, 3071 a result beyond all numbers.
[[nodiscard]] base::Value Calculate(Operator op, const base::Value& left, const base::Value& right);
[[nodiscard]] base::Value Negated(const base::Value& value);

// The pattern language of Like: * ? # [abc] [a-z] [!a-z]. Rule: case is ignored.
// Errors: 3071 for a pattern whose bracket never closes.
[[nodiscard]] bool IsLike(std::string_view text, std::string_view pattern);

}  // namespace jet::sql
