// SPDX-License-Identifier: Apache-2.0
// Ast: what a statement or a criterion says, as data.
#pragma once

#include "base/Value.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace jet::sql {

// Comparisons stand together, and what joins truths stands last.
enum class Operator {
    None,
    Power,
    Negate,
    Identity,
    Times,
    Divide,
    IntegerDivide,
    Mod,
    Plus,
    Minus,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    Not,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
};

[[nodiscard]] constexpr bool IsComparison(Operator op)
{
    return op >= Operator::Equal && op <= Operator::GreaterOrEqual;
}

[[nodiscard]] constexpr bool IsLogical(Operator op)
{
    return op >= Operator::And;
}

enum class ExpressionKind {
    Constant,
    Name,       // a field
    Unary,      // operands: 1
    Binary,     // operands: 2
    IsNull,     // operands: 1; `negated` for Is Not Null
    In,         // operands: the value, then the list
    Between,    // operands: value, low, high
    Like,       // operands: value, pattern
    Call,       // operands: the arguments
    Aggregate,  // operands: 1, none for Count(*)
};

// What kind of value an expression has, as far as its text and the table tell.
enum class ValueKind { Any, Null, Number, Text, Date, Boolean };

struct FunctionInfo;
struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

inline constexpr std::size_t kUnbound = static_cast<std::size_t>(-1);

struct Expression {
    ExpressionKind kind = ExpressionKind::Constant;
    Operator op = Operator::None;
    bool negated = false;         // Not In, Not Between, Not Like, Is Not Null
    base::Value constant;         // Constant
    std::string qualifier, name;  // Name (its table and field); Call and Aggregate (name)
    std::vector<ExpressionPtr> operands;
    std::size_t depth = 1;  // of the tree below and with it; the parser keeps it small
    std::string text;       // as written; of a whole expression or a call

    // Filled by Bind.
    std::size_t place = kUnbound;            // Name: column; Aggregate: its accumulator
    const FunctionInfo* function = nullptr;  // Call
    ValueKind type = ValueKind::Any;
};

struct TableName {
    std::string name, alias;  // no alias: empty
};

struct SelectItem {
    bool star = false;         // * or qualifier.*
    std::string qualifier;     // of a star
    ExpressionPtr expression;  // of everything else
    std::string alias;
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

// A condition and its text as written.
struct Condition {
    ExpressionPtr expression;  // null when there is none
    std::string text;
};

struct SelectStatement {
    bool distinct = false;
    std::optional<std::int32_t> top;
    std::vector<SelectItem> items;
    std::optional<TableName> from;
    Condition where;
    std::vector<ExpressionPtr> groupBy;
    Condition having;
    std::vector<OrderItem> orderBy;
};

struct SetItem {
    std::string qualifier, field;
    ExpressionPtr value;
};

struct UpdateStatement {
    TableName table;
    std::vector<SetItem> set;
    Condition where;
};

struct InsertStatement {
    std::string table;
    std::vector<std::string> fields;    // none named: all, in table order
    std::vector<ExpressionPtr> values;  // of VALUES
    std::optional<SelectStatement> select;
};

struct DeleteStatement {
    TableName table;
    Condition where;
};

using Statement = std::variant<SelectStatement, UpdateStatement, InsertStatement, DeleteStatement>;

}  // namespace jet::sql
