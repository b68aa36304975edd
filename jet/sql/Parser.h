// SPDX-License-Identifier: Apache-2.0
// Parser: statements, criteria and default values from their text.       docs/sql.md is the grammar
#pragma once

#include "jet/sql/Ast.h"

#include <string_view>

namespace jet::sql {

// A statement.
//
// Rule:   the first fault from left to right is the one reported. `today` completes date literals
//         without a year.
// Errors: 3129 no statement, 3141 SELECT list, 3067 no FROM, 3131 FROM, 3145 WHERE, 3138 ORDER BY,
//         3144 UPDATE, 3134 and 3137 INSERT, 3130 DELETE, 3142 text after the semicolon, 3126
//         brackets, 3075 in any expression, with the clause's text as written; 3360 text too long.
[[nodiscard]] Statement ParseStatement(std::string_view text, base::Date today);

// A criterion of the Find methods. Errors: 3077, 3095 an aggregate.
[[nodiscard]] ExpressionPtr ParseCriteria(std::string_view text, base::Date today);

// A field's default value; one leading "=" is passed over. Errors: 3355.
[[nodiscard]] ExpressionPtr ParseDefault(std::string_view text, base::Date today);

// A validation rule, of one field or (when `field` is empty) of whole rows.
//
// Rule:   in a field's rule the field may be left out: `>0 And <24`, `In (1, 2)`, `Is Null Or > 5`,
//         and a lone literal stands for equality with it: `"M" Or "F"`.
// Errors: 3320.
[[nodiscard]] ExpressionPtr ParseRule(std::string_view text, std::string_view field,
                                      base::Date today);

// Whether the text begins like a statement, and whether like a SELECT.
enum class StatementStart { Select, Action, None };
[[nodiscard]] StatementStart StartOf(std::string_view text);

}  // namespace jet::sql
