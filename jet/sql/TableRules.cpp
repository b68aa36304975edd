// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/TableRules.h"

#include "jet/sql/Bind.h"
#include "jet/sql/Evaluator.h"
#include "jet/sql/Parser.h"
#include "jet/sql/Session.h"

#include <algorithm>

namespace jet::sql {

namespace {

using base::NumberedError;
using base::Value;
using catalog::ValidationRule;
using table::RowToStore;

// A row about to be stored; a boolean that has no value will be false.
class RowAsStored final : public Row {
public:
    RowAsStored(const RowToStore& row, const format::TableDefinition& table)
        : row_(row), table_(table)
    {
    }
    [[nodiscard]] base::Value Value(std::size_t place) const override
    {
        base::Value value = row_.valueOf(place);
        const bool boolean = table_.columns[place].type == format::ColumnType::Boolean;
        return value.IsNull() && boolean ? base::Value(false) : value;
    }

private:
    const RowToStore& row_;
    const format::TableDefinition& table_;
};

bool IsAssigned(const RowToStore& row, std::size_t column)
{
    return std::any_of(row.values.begin(), row.values.end(),
                       [column](const auto& value) { return value.column == column; });
}

// A fault that comes to light when the rule's types are checked or when it is tried.
NumberedError BrokenRule(const NumberedError& error)
{
    std::string message = error.what();
    if (message.ends_with('.')) message.pop_back();
    return NumberedError(3320, {message});
}

}  // namespace

TableRules::TableRules(const catalog::OpenTable& table, std::function<base::Date()> now,
                       catalog::TableAt tableAt)
    : table_(table), environment_{std::move(now), OrderOf(table.rows->Definition())},
      relationships_(table, std::move(tableAt))
{
}

void TableRules::Check(const RowToStore& row) const
{
    if (table_.unread) throw base::NumberedError(*table_.unread);
    const std::vector<Rule>& rules = Rules();
    for (std::size_t column = 0; column < table_.properties.size(); ++column)
        if (row.isNew || IsAssigned(row, column)) CheckField(column, row);
    if (Outcome(rules.back(), row) == Truth::False) Refuse(rules.back());
}

void TableRules::CheckField(std::size_t column, const RowToStore& row) const
{
    const catalog::FieldProperties& properties = table_.properties[column];
    const Rule& rule = Rules()[column];
    const Value value = RowAsStored(row, table_.rows->Definition()).Value(column);
    if (properties.required && value.IsNull()) throw NumberedError(3314, {rule.owner});
    const auto* const text = value.As<std::string>();
    if (text != nullptr && text->empty() && !properties.allowZeroLength)
        throw NumberedError(3315, {rule.owner});
    if (value.IsNull() && !IsAssigned(row, column)) return;
    if (Outcome(rule, row) != Truth::True) Refuse(rule);
}

Truth TableRules::Outcome(const Rule& rule, const RowToStore& row) const
{
    if (rule.fault) throw *rule.fault;
    if (!rule.expression) return Truth::True;
    try {
        const RowAsStored values(row, table_.rows->Definition());
        return TruthOf(Evaluate(*rule.expression, values, environment_));
    } catch (const NumberedError& error) {
        // Damaged bytes are not the rule's fault.
        const bool ofTheRule = error.Number() == 3464 || error.Number() == 3071;
        throw ofTheRule ? BrokenRule(error) : error;
    }
}

void TableRules::Refuse(const Rule& rule)
{
    if (!rule.said.text.empty()) throw NumberedError(3316, {rule.said.text});
    throw NumberedError(3317, {rule.owner, rule.said.expression});
}

const std::vector<TableRules::Rule>& TableRules::Rules() const
{
    if (!rules_.empty()) return rules_;
    std::vector<Rule> rules;
    const auto& columns = table_.rows->Definition().columns;
    for (std::size_t column = 0; column < table_.properties.size(); ++column)
        rules.push_back(Prepared(table_.properties[column].rule, columns[column].name));
    rules.push_back(Prepared(table_.rule, {}));
    rules_ = std::move(rules);
    return rules_;
}

TableRules::Rule TableRules::Prepared(const ValidationRule& said, std::string_view field) const
{
    Rule rule;
    rule.said = said;
    rule.owner = table_.entry.name;
    if (!field.empty()) rule.owner += "." + std::string(field);
    if (said.expression.empty()) return rule;
    try {
        rule.expression = Bound(said.expression, field);
    } catch (const NumberedError& error) {
        rule.fault = error;
    }
    return rule;
}

// Errors: 3320, 3388, 3344.
ExpressionPtr TableRules::Bound(const std::string& text, std::string_view field) const
{
    ExpressionPtr rule = ParseRule(text, field, environment_.now());
    const Scope scope = ScopeOf(table_.rows->Definition(), table_.entry.name);
    BindKept(*rule, scope, field, table_.entry.name);
    try {
        BindCondition(*rule, scope);
    } catch (const NumberedError& error) {
        throw BrokenRule(error);
    }
    return rule;
}

}  // namespace jet::sql
