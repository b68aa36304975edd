// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/ExpressionParser.h"

#include "base/Nesting.h"
#include "base/Text.h"
#include "jet/sql/DateLiteral.h"
#include "jet/sql/Functions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace jet::sql {

namespace {

constexpr std::size_t kNestingLimit = 200;  // parentheses and prefixes inside each other
constexpr std::size_t kDepthLimit = 600;    // of the tree: as many operators in a row

// How firmly operators bind; equal rank goes from left to right.
enum Rank : int {
    kImp = 1,
    kEqv,
    kXor,
    kOr,
    kAnd,
    kNot,
    kComparison,
    kConcatenation,
    kSum,
    kMod,
    kIntegerDivision,
    kProduct,
    kSign,
    kPower
};

struct BinaryOperator {
    std::string_view text;
    Operator op;
    int rank;
};

constexpr std::array<BinaryOperator, 19> kBinaryOperators{{
    {"=", Operator::Equal, kComparison},
    {"<>", Operator::NotEqual, kComparison},
    {"<", Operator::Less, kComparison},
    {">", Operator::Greater, kComparison},
    {"<=", Operator::LessOrEqual, kComparison},
    {">=", Operator::GreaterOrEqual, kComparison},
    {"And", Operator::And, kAnd},
    {"Or", Operator::Or, kOr},
    {"Xor", Operator::Xor, kXor},
    {"Eqv", Operator::Eqv, kEqv},
    {"Imp", Operator::Imp, kImp},
    {"&", Operator::Concatenate, kConcatenation},
    {"+", Operator::Plus, kSum},
    {"-", Operator::Minus, kSum},
    {"Mod", Operator::Mod, kMod},
    {"\\", Operator::IntegerDivide, kIntegerDivision},
    {"*", Operator::Times, kProduct},
    {"/", Operator::Divide, kProduct},
    {"^", Operator::Power, kPower},
}};

constexpr std::array<std::string_view, 36> kReserved{
    "SELECT", "FROM",     "WHERE", "GROUP",  "BY",   "HAVING",      "ORDER",  "AS",   "ASC",
    "DESC",   "UPDATE",   "SET",   "INSERT", "INTO", "VALUES",      "DELETE", "AND",  "OR",
    "NOT",    "XOR",      "EQV",   "IMP",    "MOD",  "LIKE",        "IN",     "IS",   "BETWEEN",
    "ALL",    "DISTINCT", "TOP",   "UNION",  "JOIN", "DISTINCTROW", "INNER",  "NULL", "EXISTS"};

constexpr std::array<std::string_view, 11> kAggregates{
    "Count", "Sum", "Avg", "Min", "Max", "First", "Last", "StDev", "StDevP", "Var", "VarP"};

const BinaryOperator* BinaryOperatorOf(const Token& token)
{
    const auto* const found = std::find_if(kBinaryOperators.begin(), kBinaryOperators.end(),
                                           [&](const auto& known) { return token.Is(known.text); });
    return found == kBinaryOperators.end() ? nullptr : found;
}

// Constants that look like names.
std::optional<base::Value> ConstantNamed(const Token& token)
{
    for (const std::string_view word : {"TRUE", "YES", "ON"})
        if (token.Is(word)) return base::Value(true);
    for (const std::string_view word : {"FALSE", "NO", "OFF"})
        if (token.Is(word)) return base::Value(false);
    if (token.Is("NULL")) return base::Value();
    return std::nullopt;
}

base::Value RadixNumberOf(std::string_view text)
{
    const int radix = text[1] == 'H' || text[1] == 'h' ? 16 : 8;
    std::uint64_t number = 0;
    const auto result = std::from_chars(text.data() + 2, text.data() + text.size(), number, radix);
    if (result.ec != std::errc() || number > std::numeric_limits<std::uint32_t>::max())
        throw ExpressionFault{"Syntax error in number", {}};
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

// A 32-bit integer when the text is one, otherwise a double.
base::Value NumberOf(std::string_view text)
{
    if (text[0] == '&') return RadixNumberOf(text);
    const char* const end = text.data() + text.size();
    std::int32_t integer = 0;
    const auto whole = std::from_chars(text.data(), end, integer);
    if (whole.ec == std::errc() && whole.ptr == end) return integer;
    double number = 0;
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        throw ExpressionFault{"Syntax error in number", {}};
    return number;
}

class ExpressionParser {
public:
    ExpressionParser(TokenReader& reader, base::Date today) : reader_(reader), today_(today) {}

    ExpressionPtr Binary(int lowest)
    {
        ExpressionPtr left = Prefixed(lowest);
        while (true) {
            if (lowest <= kComparison && IsSpecialComparison()) {
                left = SpecialComparison(std::move(left));
                continue;
            }
            const BinaryOperator* const found = BinaryOperatorOf(reader_.Peek());
            if (found == nullptr || found->rank < lowest) return left;
            reader_.Take();
            ExpressionPtr right = Binary(found->rank + 1);
            left = Make(ExpressionKind::Binary, found->op, std::move(left), std::move(right));
        }
    }

private:
    static void Adopt(Expression& parent, ExpressionPtr child)
    {
        parent.depth = std::max(parent.depth, child->depth + 1);
        parent.operands.push_back(std::move(child));
        if (parent.depth > kDepthLimit) throw ExpressionFault{"Expression too complex", {}};
    }

    static ExpressionPtr Make(ExpressionKind kind, Operator op, ExpressionPtr one,
                              ExpressionPtr two = nullptr)
    {
        auto made = std::make_unique<Expression>();
        made->kind = kind;
        made->op = op;
        Adopt(*made, std::move(one));
        if (two) Adopt(*made, std::move(two));
        return made;
    }

    ExpressionPtr Prefixed(int lowest)
    {
        if (nesting_ >= kNestingLimit) throw ExpressionFault{"Expression too complex", {}};
        const base::Nesting nesting(nesting_);
        if (lowest <= kComparison && LacksLeftSide()) return ImpliedField();
        if (reader_.TakeIf("Not"))
            return Make(ExpressionKind::Unary, Operator::Not, Binary(std::max<int>(kNot, lowest)));
        if (reader_.TakeIf("-"))
            return Make(ExpressionKind::Unary, Operator::Negate, Binary(kPower));
        if (reader_.TakeIf("+"))
            return Make(ExpressionKind::Unary, Operator::Identity, Binary(kPower));
        return Primary();
    }

    [[nodiscard]] bool LacksLeftSide() const
    {
        if (reader_.implied.empty()) return false;
        const BinaryOperator* const found = BinaryOperatorOf(reader_.Peek());
        return (found != nullptr && found->rank == kComparison) || IsSpecialComparison();
    }

    [[nodiscard]] ExpressionPtr ImpliedField() const
    {
        auto made = std::make_unique<Expression>();
        made->kind = ExpressionKind::Name;
        made->name = reader_.implied;
        return made;
    }

    [[nodiscard]] bool IsSpecialComparison() const
    {
        const Token& token = reader_.Peek(reader_.Peek().Is("Not") ? 1 : 0);
        return token.Is("In") || token.Is("Between") || token.Is("Like") || reader_.Peek().Is("Is");
    }

    // In, Between, Like and Is, with the Not that may stand before or within them.
    ExpressionPtr SpecialComparison(ExpressionPtr left)
    {
        const bool negated = reader_.TakeIf("Not");
        ExpressionPtr made;
        if (reader_.TakeIf("Is")) {
            made = Make(ExpressionKind::IsNull, Operator::None, std::move(left));
            made->negated = reader_.TakeIf("Not");
            if (!reader_.TakeIf("Null")) throw ExpressionFault{"Invalid use of Is operator", {}};
        } else {
            if (reader_.TakeIf("In")) {
                made = Make(ExpressionKind::In, Operator::None, std::move(left));
                if (!reader_.TakeIf("(")) throw ExpressionFault{"In operator without ()", {}};
                List(*made);
            } else if (reader_.TakeIf("Between")) {
                made = Make(ExpressionKind::Between, Operator::None, std::move(left),
                            Binary(kConcatenation));
                if (!reader_.TakeIf("And"))
                    throw ExpressionFault{"Between operator without And", {}};
                Adopt(*made, Binary(kConcatenation));
            } else {
                reader_.Take();
                made = Make(ExpressionKind::Like, Operator::None, std::move(left),
                            Binary(kConcatenation));
            }
            made->negated = negated;
        }
        return made;
    }

    // Expressions up to the closing parenthesis, which is taken.
    void List(Expression& into)
    {
        do {
            Adopt(into, Binary(kImp));
        } while (reader_.TakeIf(","));
        Close();
    }

    void Close()
    {
        if (reader_.TakeIf(")")) return;
        if (reader_.Peek().kind == TokenKind::End || reader_.Peek().Is(";"))
            throw ExpressionFault{"Missing ), ], or Item", {}};
        throw FaultAfterOperand(reader_.Peek());
    }

    ExpressionPtr Primary()
    {
        const Token& token = reader_.Peek();
        switch (token.kind) {
        case TokenKind::Text:
            return Constant(token.text);
        case TokenKind::Number:
            return Constant(NumberOf(token.text));
        case TokenKind::Date:
            return DateConstant(token.text);
        case TokenKind::BracketedName:
            return Name();
        case TokenKind::Name:
            return Word();
        default:
            break;
        }
        if (!token.Is("(")) throw FaultForOperand(token);
        reader_.Take();
        ExpressionPtr inner = Binary(kImp);
        Close();
        return inner;
    }

    ExpressionPtr Constant(base::Value value)
    {
        auto made = std::make_unique<Expression>();
        made->constant = std::move(value);
        reader_.Take();
        return made;
    }

    ExpressionPtr DateConstant(std::string_view text)
    {
        const std::optional<base::Date> date = ReadDateLiteral(text, today_);
        if (!date) throw ExpressionFault{"Syntax error in date", {}};
        return Constant(*date);
    }

    // A word where an operand is expected: a function, a constant or a field.
    ExpressionPtr Word()
    {
        const Token& token = reader_.Peek();
        if (std::optional<base::Value> constant = ConstantNamed(token))
            return Constant(std::move(*constant));
        const bool called = reader_.Peek(1).Is("(");
        // Asc( is a function although ASC has its place in ORDER BY.
        if (IsReserved(token) && !(called && FindFunction(token.text) != nullptr))
            throw ExpressionFault{kMissingOperator, {}};
        return called ? Call() : Name();
    }

    ExpressionPtr Name()
    {
        auto made = std::make_unique<Expression>();
        made->kind = ExpressionKind::Name;
        made->name = reader_.Take().text;
        if (reader_.TakeIf(".") || reader_.TakeIf("!")) {
            const Token& field = reader_.Peek();
            if (field.kind != TokenKind::Name && field.kind != TokenKind::BracketedName)
                throw ExpressionFault{"Invalid use of '.', '!', or '()'", {}};
            made->qualifier = std::move(made->name);
            made->name = reader_.Take().text;
        }
        return made;
    }

    ExpressionPtr Call()
    {
        const std::size_t first = reader_.at;
        auto made = std::make_unique<Expression>();
        made->name = reader_.Take().text;
        made->kind = IsAggregateName(made->name) ? ExpressionKind::Aggregate : ExpressionKind::Call;
        reader_.Take();
        if (made->kind == ExpressionKind::Aggregate && base::SameName(made->name, "Count") &&
            reader_.TakeIf("*")) {
            Close();
        } else {
            if (!reader_.TakeIf(")")) List(*made);
            CheckArgumentCount(*made);
        }
        made->text = reader_.TextSince(first);
        return made;
    }

    static void CheckArgumentCount(const Expression& call)
    {
        const std::size_t count = call.operands.size();
        bool fits = count == 1;
        if (call.kind == ExpressionKind::Call) {
            const FunctionInfo* const known = FindFunction(call.name);
            fits = known == nullptr || (count >= known->fewest && count <= known->most);
        }
        if (!fits) throw ExpressionFault{"Wrong number of arguments used with function", {}};
    }

    [[nodiscard]] static ExpressionFault FaultForOperand(const Token& token)
    {
        switch (token.kind) {
        case TokenKind::OpenText:
            return {"Syntax error in string", {}};
        case TokenKind::OpenDate:
            return {"Syntax error in date", {}};
        case TokenKind::BadNumber:
            return {"Syntax error in number", {}};
        case TokenKind::OpenBracket:
            return {"Missing ), ], or Item", token.text};
        case TokenKind::Other:
            return {token.text == "|" ? "Invalid use of vertical bars" : "Syntax error", {}};
        default:
            break;
        }
        if (token.Is(",")) return {"Syntax error (comma)", {}};
        if (token.Is(".") || token.Is("!")) return {"Invalid use of '.', '!', or '()'", {}};
        return {kMissingOperator, {}};
    }

    TokenReader& reader_;
    base::Date today_;
    std::size_t nesting_ = 0;
};

}  // namespace

const Token& TokenReader::Peek(std::size_t ahead) const
{
    return tokens[std::min(at + ahead, tokens.size() - 1)];
}

const Token& TokenReader::Take()
{
    const Token& token = Peek();
    if (at + 1 < tokens.size()) ++at;
    return token;
}

bool TokenReader::TakeIf(std::string_view symbolOrWord)
{
    if (!Peek().Is(symbolOrWord)) return false;
    Take();
    return true;
}

std::string TokenReader::TextSince(std::size_t first) const
{
    if (at <= first) return {};
    const std::size_t begin = tokens[first].begin;
    return std::string(text.substr(begin, tokens[at - 1].end - begin));
}

bool IsReserved(const Token& token)
{
    return token.kind == TokenKind::Name &&
           std::any_of(kReserved.begin(), kReserved.end(),
                       [&](std::string_view word) { return token.Is(word); });
}

bool IsAggregateName(std::string_view name)
{
    return std::any_of(kAggregates.begin(), kAggregates.end(),
                       [&](std::string_view known) { return base::SameName(name, known); });
}

ExpressionFault FaultAfterOperand(const Token& token)
{
    switch (token.kind) {
    case TokenKind::Symbol:
        break;
    case TokenKind::Other:
        return {token.text == "|" ? "Invalid use of vertical bars" : "Syntax error", {}};
    default:
        return {kMissingOperator, {}};
    }
    if (token.Is(")")) return {"Extra )", {}};
    if (token.Is(",")) return {"Syntax error (comma)", {}};
    if (token.Is(".") || token.Is("!")) return {"Invalid use of '.', '!', or '()'", {}};
    if (token.Is("(")) return {kMissingOperator, {}};
    return {"Syntax error", {}};
}

ExpressionPtr ParseExpression(TokenReader& reader, base::Date today)
{
    const std::size_t first = reader.at;
    ExpressionPtr made = ExpressionParser(reader, today).Binary(kImp);
    made->text = reader.TextSince(first);
    return made;
}

}  // namespace jet::sql
