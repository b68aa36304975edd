// SPDX-License-Identifier: Apache-2.0
// Query: a SELECT joined to its table, its names and types checked.
#pragma once

#include "jet/sql/Ast.h"
#include "jet/sql/Bind.h"
#include "jet/sql/Filter.h"
#include "jet/sql/Session.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace jet::sql {

struct OutputField {
    std::string name;
    std::optional<std::size_t> column;       // of the table, when the field is one
    const Expression* expression = nullptr;  // otherwise
    format::ColumnType type = format::ColumnType::Text;
};

struct SortKey {
    const Expression* expression = nullptr;  // of the row
    std::optional<std::size_t> output;       // or the output field of this place
    bool descending = false;
};

// Neither moves nor copies: its parts refer to each other. QueryRows.h gives its rows.
class Query {
public:
    // Errors: 3078 unknown table, 3085, 3061 unknown names, 3464, 3095, 3096 and 3097 aggregates
    //         where none may be, 3122 a plain field beside an aggregate, 3103 an alias inside its
    //         own expression, 3062 one alias twice, 3138 no such output to sort by.
    Query(SelectStatement statement, const Session& session);
    // All fields and rows of one table.
    Query(TablePtr table, const Session& session);
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    // Null for a SELECT of constants.
    [[nodiscard]] const TablePtr& Table() const { return table_; }
    [[nodiscard]] const std::vector<OutputField>& Fields() const { return fields_; }
    [[nodiscard]] const std::vector<SortKey>& SortKeys() const { return sortKeys_; }
    [[nodiscard]] const Filter& Where() const { return filter_; }
    [[nodiscard]] const Environment& World() const { return environment_; }
    [[nodiscard]] const SelectStatement& Statement() const { return statement_; }

    // Aggregates of the statement, each once, at the place its expression names.
    [[nodiscard]] const std::vector<const Expression*>& Aggregates() const { return aggregates_; }
    [[nodiscard]] bool IsGrouped() const { return grouped_; }
    // Whether each row of the result is a row of the table, and so can be edited.
    [[nodiscard]] bool GivesTableRows() const;
    // Whether the rows need no more order than the table's.
    [[nodiscard]] bool InStorageOrder() const;

    // One output field of a row of the table.
    [[nodiscard]] base::Value ValueOf(const format::RowView& row, std::size_t field) const;

private:
    void BindEverything(const Scope& scope);
    void AddFields(const Scope& scope);
    void AddSortKeys();
    void CollectAggregates(Expression& expression);
    void CheckGrouping() const;

    SelectStatement statement_;
    Environment environment_;
    TablePtr table_;
    std::vector<OutputField> fields_;
    std::vector<SortKey> sortKeys_;
    std::vector<const Expression*> aggregates_;
    bool grouped_ = false;
    Filter filter_;
};

}  // namespace jet::sql
