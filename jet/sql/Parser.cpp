// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Parser.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/ExpressionParser.h"

#include <algorithm>
#include <functional>
#include <initializer_list>

namespace jet::sql {

namespace {

using base::NumberedError;

constexpr std::size_t kTextLimit = 64000;  // characters of a statement or criterion

// Where an expression of a clause may end.
struct ClauseEnd {
    std::initializer_list<std::string_view> words;
    int emptyError = 0;  // when there is no expression at all
};

class StatementParser {
public:
    StatementParser(std::string_view text, base::Date today)
        : reader_{text, Tokenize(text), 0}, today_(today)
    {
    }

    Statement Run()
    {
        if (reader_.TakeIf("SELECT")) {
            SelectStatement select = Select();
            End(3142);
            return select;
        }
        if (reader_.TakeIf("UPDATE")) return Update();
        if (reader_.TakeIf("INSERT")) return Insert();
        if (reader_.TakeIf("DELETE")) return Delete();
        throw NumberedError(3129);
    }

private:
    // Nothing but one semicolon may follow.
    void End(int error)
    {
        const bool closed = reader_.TakeIf(";");
        if (reader_.Peek().kind == TokenKind::End) return;
        CheckBrackets(reader_.Peek());
        throw NumberedError(closed ? 3142 : error);
    }

    static void CheckBrackets(const Token& token)
    {
        if (token.kind == TokenKind::OpenBracket) throw NumberedError(3126, {"[" + token.text});
    }

    [[nodiscard]] bool AtWordOf(const ClauseEnd& end) const
    {
        const Token& token = reader_.Peek();
        return token.kind == TokenKind::End || token.Is(";") ||
               std::any_of(end.words.begin(), end.words.end(),
                           [&](std::string_view word) { return token.Is(word); });
    }

    // The whole expression of the clause that begins at token `first`, as written.
    std::string ClauseText(std::size_t first, const ClauseEnd& end)
    {
        reader_.at = first;
        int open = 0;
        while (reader_.Peek().kind != TokenKind::End && !(open == 0 && AtWordOf(end))) {
            if (reader_.Peek().Is("(")) ++open;
            if (reader_.Peek().Is(")") && open > 0) --open;
            reader_.Take();
        }
        return reader_.TextSince(first);
    }

    // One expression that reaches to the end of its clause.
    ExpressionPtr ClauseExpression(const ClauseEnd& end)
    {
        if (AtWordOf(end)) throw NumberedError(end.emptyError);
        const std::size_t first = reader_.at;
        try {
            ExpressionPtr made = ParseExpression(reader_, today_);
            if (!AtWordOf(end)) throw FaultAfterOperand(reader_.Peek());
            return made;
        } catch (const ExpressionFault& fault) {
            if (!fault.openBracket.empty()) throw NumberedError(3126, {"[" + fault.openBracket});
            throw NumberedError(3075, {fault.fragment, ClauseText(first, end)});
        }
    }

    [[nodiscard]] static bool IsIdentifier(const Token& token)
    {
        return token.kind == TokenKind::BracketedName ||
               (token.kind == TokenKind::Name && !IsReserved(token));
    }

    std::string Identifier(int error)
    {
        CheckBrackets(reader_.Peek());
        if (!IsIdentifier(reader_.Peek())) throw NumberedError(error);
        return reader_.Take().text;
    }

    TableName Table(int error)
    {
        TableName table;
        table.name = Identifier(error);
        if (reader_.TakeIf("AS") || IsIdentifier(reader_.Peek())) table.alias = Identifier(error);
        return table;
    }

    Condition Where(const ClauseEnd& end)
    {
        Condition condition;
        condition.expression = ClauseExpression(end);
        condition.text = condition.expression->text;
        return condition;
    }

    SelectStatement Select()
    {
        SelectStatement select;
        select.distinct = reader_.TakeIf("DISTINCT");
        if (!select.distinct && !reader_.TakeIf("ALL")) reader_.TakeIf("DISTINCTROW");
        if (reader_.TakeIf("TOP")) select.top = Count();
        do {
            select.items.push_back(Item());
        } while (reader_.TakeIf(","));
        if (reader_.TakeIf("FROM")) {
            select.from = Table(3131);
            Clauses(select);
        } else {
            CheckWithoutFrom(select);
        }
        return select;
    }

    void CheckWithoutFrom(const SelectStatement& select)
    {
        const std::function<bool(const Expression&)> named = [&](const Expression& expression) {
            return expression.kind == ExpressionKind::Name ||
                   std::any_of(expression.operands.begin(), expression.operands.end(),
                               [&](const ExpressionPtr& part) { return named(*part); });
        };
        for (const SelectItem& item : select.items)
            if (item.star || named(*item.expression)) throw NumberedError(3067);
        if (!AtWordOf({{}, 0})) throw NumberedError(3141);
    }

    std::int32_t Count()
    {
        const Token& token = reader_.Take();
        const bool digits = token.kind == TokenKind::Number && token.text.size() <= 9 &&
                            token.text.find_first_not_of("0123456789") == std::string::npos;
        if (!digits) throw NumberedError(3141);
        return std::stoi(token.text);
    }

    SelectItem Item()
    {
        SelectItem item;
        if (reader_.TakeIf("*")) {
            item.star = true;
        } else if (IsIdentifier(reader_.Peek()) && reader_.Peek(1).Is(".") &&
                   reader_.Peek(2).Is("*")) {
            item.star = true;
            item.qualifier = reader_.Take().text;
            reader_.at += 2;
        } else {
            item.expression = ClauseExpression({{",", "FROM", "AS"}, 3141});
            if (reader_.TakeIf("AS")) item.alias = Identifier(3141);
        }
        if (!AtWordOf({{",", "FROM"}, 0})) throw NumberedError(3141);
        return item;
    }

    void Clauses(SelectStatement& select)
    {
        if (reader_.TakeIf("WHERE")) select.where = Where({{"GROUP", "HAVING", "ORDER"}, 3145});
        if (reader_.TakeIf("GROUP")) {
            if (!reader_.TakeIf("BY")) throw NumberedError(3131);
            do {
                select.groupBy.push_back(ClauseExpression({{",", "HAVING", "ORDER"}, 3141}));
            } while (reader_.TakeIf(","));
        }
        if (reader_.TakeIf("HAVING")) select.having = Where({{"ORDER"}, 3141});
        if (reader_.TakeIf("ORDER")) {
            if (!reader_.TakeIf("BY")) throw NumberedError(3138);
            do {
                select.orderBy.push_back(Key());
            } while (reader_.TakeIf(","));
        }
        // What follows the last clause belongs to none.
        if (!AtWordOf({{}, 0})) throw NumberedError(select.orderBy.empty() ? 3131 : 3138);
    }

    // Rule: every fault of a sort key is the clause's fault.
    OrderItem Key()
    {
        OrderItem item;
        try {
            item.expression = ClauseExpression({{",", "ASC", "DESC"}, 3138});
        } catch (const NumberedError& error) {
            if (error.Number() != 3075) throw;
            throw NumberedError(3138);
        }
        item.descending = reader_.TakeIf("DESC");
        if (!item.descending) reader_.TakeIf("ASC");
        return item;
    }

    UpdateStatement Update()
    {
        UpdateStatement update;
        update.table = Table(3144);
        if (!reader_.TakeIf("SET")) throw NumberedError(3144);
        do {
            SetItem item;
            item.field = Identifier(3144);
            if (reader_.TakeIf(".") || reader_.TakeIf("!")) {
                item.qualifier = std::move(item.field);
                item.field = Identifier(3144);
            }
            if (!reader_.TakeIf("=")) throw NumberedError(3144);
            item.value = ClauseExpression({{",", "WHERE"}, 3144});
            update.set.push_back(std::move(item));
        } while (reader_.TakeIf(","));
        if (reader_.TakeIf("WHERE")) update.where = Where({{}, 3145});
        End(3144);
        return update;
    }

    InsertStatement Insert()
    {
        InsertStatement insert;
        if (!reader_.TakeIf("INTO")) throw NumberedError(3134);
        insert.table = Identifier(3134);
        if (reader_.TakeIf("(")) {
            do {
                insert.fields.push_back(Identifier(3134));
            } while (reader_.TakeIf(","));
            if (!reader_.TakeIf(")")) throw NumberedError(3134);
        }
        if (reader_.TakeIf("SELECT")) {
            insert.select = Select();
        } else {
            Values(insert);
        }
        End(3137);
        return insert;
    }

    void Values(InsertStatement& insert)
    {
        if (!reader_.TakeIf("VALUES") || !reader_.TakeIf("(")) throw NumberedError(3134);
        do {
            insert.values.push_back(ClauseExpression({{",", ")"}, 3134}));
        } while (reader_.TakeIf(","));
        if (!reader_.TakeIf(")")) throw NumberedError(3134);
    }

    DeleteStatement Delete()
    {
        DeleteStatement erase;
        if (!reader_.TakeIf("*") && IsIdentifier(reader_.Peek())) {
            reader_.Take();
            if (!reader_.TakeIf(".") || !reader_.TakeIf("*")) throw NumberedError(3130);
        }
        if (!reader_.TakeIf("FROM")) throw NumberedError(3130);
        erase.table = Table(3131);
        if (reader_.TakeIf("WHERE")) erase.where = Where({{}, 3145});
        End(3131);
        return erase;
    }

    TokenReader reader_;
    base::Date today_;
};

// The expression that fills the whole text. Throws: ExpressionFault.
ExpressionPtr WholeExpression(TokenReader& reader, base::Date today)
{
    ExpressionPtr made = ParseExpression(reader, today);
    if (reader.Peek().kind != TokenKind::End) throw FaultAfterOperand(reader.Peek());
    return made;
}

// Whether it is a literal other than True, False and Null, maybe with a sign.
bool IsLiteral(const Expression& e)
{
    if (e.kind == ExpressionKind::Unary && e.op != Operator::Not) return IsLiteral(*e.operands[0]);
    return e.kind == ExpressionKind::Constant && !e.constant.IsNull() &&
           e.constant.As<bool>() == nullptr;
}

// A field's rule with its lone literals made equalities.
ExpressionPtr WithEqualities(ExpressionPtr rule, std::string_view field)
{
    if (field.empty()) return rule;
    if (IsLogical(rule->op) || rule->op == Operator::Not) {
        for (ExpressionPtr& operand : rule->operands)
            operand = WithEqualities(std::move(operand), field);
        return rule;
    }
    if (!IsLiteral(*rule)) return rule;
    auto name = std::make_unique<Expression>();
    name->kind = ExpressionKind::Name;
    name->name = field;
    auto equality = std::make_unique<Expression>();
    equality->kind = ExpressionKind::Binary;
    equality->op = Operator::Equal;
    equality->depth = rule->depth + 1;
    equality->text = rule->text;
    equality->operands.push_back(std::move(name));
    equality->operands.push_back(std::move(rule));
    return equality;
}

void CheckLength(std::string_view text)
{
    if (text.size() > kTextLimit && base::Length(text) > kTextLimit) throw NumberedError(3360);
}

}  // namespace

Statement ParseStatement(std::string_view text, base::Date today)
{
    CheckLength(text);
    return StatementParser(text, today).Run();
}

ExpressionPtr ParseCriteria(std::string_view text, base::Date today)
{
    CheckLength(text);
    TokenReader reader{text, Tokenize(text), 0};
    try {
        return WholeExpression(reader, today);
    } catch (const ExpressionFault& fault) {
        throw NumberedError(3077, {fault.fragment});
    }
}

ExpressionPtr ParseDefault(std::string_view text, base::Date today)
{
    TokenReader reader{text, Tokenize(text), 0};
    reader.TakeIf("=");
    try {
        return WholeExpression(reader, today);
    } catch (const ExpressionFault&) {
        throw NumberedError(3355);
    }
}

ExpressionPtr ParseRule(std::string_view text, std::string_view field, base::Date today)
{
    TokenReader reader{text, Tokenize(text), 0, field};
    try {
        CheckLength(text);
        return WithEqualities(WholeExpression(reader, today), field);
    } catch (const ExpressionFault& fault) {
        throw NumberedError(3320, {fault.fragment});
    }
}

StatementStart StartOf(std::string_view text)
{
    const std::vector<Token> tokens = Tokenize(text);
    if (tokens.front().Is("SELECT")) return StatementStart::Select;
    for (const std::string_view word :
         {"UPDATE", "INSERT", "DELETE", "CREATE", "ALTER", "DROP", "EXECUTE"})
        if (tokens.front().Is(word)) return StatementStart::Action;
    return StatementStart::None;
}

}  // namespace jet::sql
