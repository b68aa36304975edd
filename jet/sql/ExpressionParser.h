// SPDX-License-Identifier: Apache-2.0
// ExpressionParser: tokens to an expression tree; the grammar of conditions, values and criteria.
#pragma once

#include "jet/sql/Ast.h"
#include "jet/sql/Lexer.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet::sql {

// A fault in an expression: the first words of the message; the clause adds the rest.
struct ExpressionFault {
    std::string fragment;
    // The name when its bracket is the fault, which is a number of its own in a statement.
    std::string openBracket;
};

inline constexpr const char* kMissingOperator = "Syntax error (missing operator)";

// A list of tokens and the place in it.
struct TokenReader {
    std::string_view text;  // what the tokens were cut from
    std::vector<Token> tokens;
    std::size_t at = 0;
    std::string_view implied =
        {};  // the field that a comparison without left side means; empty: none

    [[nodiscard]] const Token& Peek(std::size_t ahead = 0) const;
    const Token& Take();
    // Takes the next token when it is this symbol or word.
    bool TakeIf(std::string_view symbolOrWord);
    // The text from the token `first` up to the present one, as written.
    [[nodiscard]] std::string TextSince(std::size_t first) const;
};

// Whether a word has a place in the grammar and so names nothing without brackets.
[[nodiscard]] bool IsReserved(const Token& token);
[[nodiscard]] bool IsAggregateName(std::string_view name);

// The fault of finding `token` where an operator or the end had to be.
[[nodiscard]] ExpressionFault FaultAfterOperand(const Token& token);

// One expression, as long as it goes; the token behind it is for the caller to judge.
//
// Rule:   nesting and length are bounded, so hostile text neither overflows the stack nor takes
//         long.
// Throws: ExpressionFault; the parser above it turns that into a numbered error.
[[nodiscard]] ExpressionPtr ParseExpression(TokenReader& reader, base::Date today);

}  // namespace jet::sql
