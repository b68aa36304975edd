// SPDX-License-Identifier: Apache-2.0
// Lexer: SQL text and criteria cut into tokens.                          docs/sql.md
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace jet::sql {

enum class TokenKind {
    End,
    Name,           // a word: keyword, field or function
    BracketedName,  // [any text]
    Number,
    BadNumber,    // "1.2.3", "1E"
    Text,         // a quoted literal, its content without the quotes
    OpenText,     // a quoted literal that never ends
    Date,         // what stands between two # marks, not yet read as a date
    OpenDate,     // a # without a second one
    OpenBracket,  // a [ without its ]
    Symbol,       // one of ( ) , ; . ! = <> < > <= >= + - * / \ ^ &
    Other         // a character that has no place in SQL
};

// Units: begin and end are bytes of the statement's text.
struct Token {
    TokenKind kind = TokenKind::End;
    std::size_t begin = 0, end = 0;
    std::string text;  // content of literals and names, otherwise as written

    // Whether it is this symbol, or this word whatever its case.
    [[nodiscard]] bool Is(std::string_view symbolOrWord) const;
};

// All tokens, an End token last. Never fails: what cannot be a token is an Open or Other one, and
// the parser says whether that is the first fault.
[[nodiscard]] std::vector<Token> Tokenize(std::string_view text);

}  // namespace jet::sql
