// SPDX-License-Identifier: Apache-2.0
// Bind: the names of an expression joined to fields and functions, and its types checked.
#pragma once

#include "jet/format/TableDefinition.h"
#include "jet/sql/Ast.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jet::sql {

// The fields that names may mean.
struct Scope {
    struct Field {
        std::string name;
        ValueKind kind = ValueKind::Any;
        std::size_t place = 0;  // what Row::Value is asked for
    };
    std::string table;  // what may stand before the point; empty: anything may
    std::vector<Field> fields;

    [[nodiscard]] const Field* Find(std::string_view qualifier, std::string_view name) const;
};

[[nodiscard]] ValueKind KindOf(format::ColumnType type);
// The columns of a table, each at its own place.
[[nodiscard]] Scope ScopeOf(const format::TableDefinition& table, std::string_view name);

// The three steps of binding, in the order in which a statement's faults are found.

// Errors: 3085 unknown function.
void BindFunctions(Expression& expression);
// Adds to `unknown` the names that no field has, each once whatever its case.
void BindNames(Expression& expression, const Scope& scope, std::vector<std::string>& unknown);
// Errors: 3464 a text where a number, date or boolean is, and the other way round.
ValueKind BindTypes(Expression& expression, const Scope& scope);
// BindTypes for what must be true or false.
void BindCondition(Expression& expression, const Scope& scope);

// All steps of a Find criterion. Errors: 3085, 3070, 3095, 3464.
void BindCriteria(Expression& expression, const Scope& scope);

// Functions and names of an expression that a table keeps for `field`, or for whole rows when that
// is empty. Errors: 3388 unknown function, 3344 unknown name or an aggregate.
void BindKept(Expression& expression, const Scope& scope, std::string_view field,
              std::string_view table);

// The first aggregate in the tree; nothing when there is none.
[[nodiscard]] const Expression* FindAggregate(const Expression& expression);

}  // namespace jet::sql
