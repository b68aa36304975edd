// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Action.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/QueryRows.h"
#include "jet/sql/StoreValue.h"

#include <algorithm>
#include <functional>

namespace jet::sql {

namespace {

using base::NumberedError;
using table::Assignment;
using table::Change;

// Read-only file and damaged bytes concern every row alike, so they always end the statement.
bool ConcernsTheRow(const NumberedError& error)
{
    switch (error.Number()) {
    case 3027:
    case 3043:
    case 3049:
    case 3343:
        return false;
    default:
        return true;
    }
}

// One row's change, made when nobody else can change the row any more; nothing when there is none.
using Maker = std::function<std::optional<Change>()>;

class Action {
public:
    Action(const Session& session, OnRowError onRowError)
        : session_(session), onRowError_(onRowError)
    {
    }

    std::int32_t operator()(SelectStatement&) { throw NumberedError(3065); }

    std::int32_t operator()(UpdateStatement& update)
    {
        Open(update.table, 3078);
        const std::vector<std::size_t> columns = Targets(update);
        std::vector<Expression*> values;
        for (const SetItem& item : update.set)
            values.push_back(item.value.get());
        Bind(values, update.where, ScopeOfTable(update.table), UnknownTargets(update));
        for (const table::RowId id : Chosen(update.where))
            makers_.push_back([&, id] { return UpdateOf(id, columns, values); });
        return Apply();
    }

    std::int32_t operator()(InsertStatement& insert)
    {
        Open({insert.table, {}}, 3192);
        const std::vector<std::size_t> columns = Destinations(insert);
        if (insert.select) {
            const Query query(std::move(*insert.select), session_);
            if (query.Fields().size() != columns.size()) throw NumberedError(3346);
            std::vector<ValueRow> found;
            const auto read = [&] { found = RowsOf(query); };
            query.Table() ? WholeOf(*query.Table(), read) : read();
            for (const ValueRow& values : found)
                Gather([&] { return InsertOf(columns, values); });
            return Apply();
        }
        if (insert.values.size() != columns.size()) throw NumberedError(3346);
        std::vector<Expression*> all;
        for (const ExpressionPtr& value : insert.values)
            all.push_back(value.get());
        Bind(all, {}, {}, {});
        ValueRow values;
        for (const Expression* const value : all)
            values.push_back(Evaluate(*value, NoRow(), environment_));
        Gather([&] { return InsertOf(columns, values); });
        return Apply();
    }

    std::int32_t operator()(DeleteStatement& erase)
    {
        Open(erase.table, 3078);
        Bind({}, erase.where, ScopeOfTable(erase.table), {});
        for (const table::RowId id : Chosen(erase.where))
            makers_.push_back([this, id] { return DeletionOf(id); });
        return Apply();
    }

private:
    void Open(const TableName& name, int unknown)
    {
        Whole([&] { table_ = session_.open(name.name); });
        if (!table_) throw NumberedError(unknown, {name.name});
        environment_ = EnvironmentFor(session_, Definition());
    }

    [[nodiscard]] const format::TableDefinition& Definition() const
    {
        return table_->rows->Definition();
    }

    [[nodiscard]] Scope ScopeOfTable(const TableName& name) const
    {
        return ScopeOf(Definition(), name.alias.empty() ? name.name : name.alias);
    }

    // The columns to set; one that is none counts among the unknown names.
    [[nodiscard]] std::vector<std::size_t> Targets(const UpdateStatement& update) const
    {
        std::vector<std::size_t> columns;
        for (const SetItem& item : update.set) {
            const std::optional<std::size_t> column = Definition().FindColumn(item.field);
            if (!column) continue;
            if (std::find(columns.begin(), columns.end(), *column) != columns.end())
                throw NumberedError(3063, {item.field});
            columns.push_back(*column);
        }
        return columns;
    }

    [[nodiscard]] std::vector<std::string> UnknownTargets(const UpdateStatement& update) const
    {
        std::vector<std::string> unknown;
        for (const SetItem& item : update.set) {
            const auto same = [&](const std::string& name) {
                return base::SameName(name, item.field);
            };
            if (!Definition().FindColumn(item.field) &&
                std::none_of(unknown.begin(), unknown.end(), same))
                unknown.push_back(item.field);
        }
        return unknown;
    }

    [[nodiscard]] std::vector<std::size_t> Destinations(const InsertStatement& insert) const
    {
        std::vector<std::size_t> columns;
        for (const std::string& field : insert.fields) {
            const std::optional<std::size_t> column = Definition().FindColumn(field);
            if (!column) throw NumberedError(3127, {field});
            if (std::find(columns.begin(), columns.end(), *column) != columns.end())
                throw NumberedError(3063, {field});
            columns.push_back(*column);
        }
        if (insert.fields.empty())
            for (std::size_t i = 0; i < Definition().columns.size(); ++i)
                columns.push_back(i);
        return columns;
    }

    // The faults in the order in which they count: functions, names, types.
    static void Bind(const std::vector<Expression*>& values, const Condition& where,
                     const Scope& scope, std::vector<std::string> unknown)
    {
        std::vector<Expression*> all = values;
        if (where.expression) all.push_back(where.expression.get());
        for (Expression* const expression : all)
            BindFunctions(*expression);
        for (Expression* const expression : all)
            BindNames(*expression, scope, unknown);
        if (!unknown.empty()) throw NumberedError(3061, {std::to_string(unknown.size())});
        if (where.expression && FindAggregate(*where.expression) != nullptr)
            throw NumberedError(3096, {where.text});
        for (const Expression* const value : values)
            RefuseAggregate(*value);
        for (Expression* const value : values)
            BindTypes(*value, scope);
        if (where.expression) BindCondition(*where.expression, scope);
    }

    static void RefuseAggregate(const Expression& expression)
    {
        if (FindAggregate(expression) != nullptr) throw NumberedError(3095, {expression.text});
    }

    [[nodiscard]] std::vector<table::RowId> Chosen(const Condition& where)
    {
        if (where.expression) filter_ = Filter(*where.expression, *table_->rows, environment_);
        std::vector<table::RowId> rows;
        WholeOf(*table_, [&] {
            rows.clear();
            ForEachRow(*table_->rows, filter_,
                       [&](table::RowId id, const format::RowView&) { rows.push_back(id); });
        });
        return rows;
    }

    void Whole(const std::function<void()>& read) const
    {
        return session_.whole ? session_.whole(read) : read();
    }

    // The same of the rows of a table, which may lie in another file.
    static void WholeOf(const catalog::OpenTable& table, const std::function<void()>& read)
    {
        table.rows->Pages().ReadWhole(pages::Pager::Look::OnlyIfOld, read);
    }

    // A row to be inserted; one that cannot be is passed over or ends the statement.
    void Gather(const std::function<Change()>& make)
    {
        try {
            makers_.push_back([change = make()] { return change; });
        } catch (const NumberedError& error) {
            if (EndsTheStatement(error)) throw;
        }
    }

    [[nodiscard]] bool EndsTheStatement(const NumberedError& error) const
    {
        return onRowError_ == OnRowError::Stop || !ConcernsTheRow(error);
    }

    // All rows in one write set; when one of them is refused, each in its own.
    std::int32_t Apply()
    {
        if (makers_.empty()) return 0;
        if (const auto changed = Applied(makers_)) return *changed;
        std::int32_t sum = 0;
        for (const Maker& maker : makers_)
            if (makers_.size() > 1) sum += Applied({&maker, 1}).value_or(0);
        return sum;
    }

    // How many rows were changed; nothing when they are refused.
    std::optional<std::int32_t> Applied(std::span<const Maker> makers)
    {
        std::int32_t count = 0;
        try {
            table_->rows->Apply([&] {
                std::vector<Change> changes = Made(makers);
                count = static_cast<std::int32_t>(changes.size());
                return changes;
            });
            return count;
        } catch (const NumberedError& error) {
            if (EndsTheStatement(error)) throw;
            return std::nullopt;
        }
    }

    // A row that cannot be changed is passed over or ends the statement.
    [[nodiscard]] std::vector<Change> Made(std::span<const Maker> makers) const
    {
        std::vector<Change> changes;
        for (const Maker& maker : makers) {
            try {
                if (std::optional<Change> change = maker()) changes.push_back(*std::move(change));
            } catch (const NumberedError& error) {
                if (EndsTheStatement(error)) throw;
            }
        }
        return changes;
    }

    // The value a column gets.
    [[nodiscard]] Assignment Converted(std::size_t column, const base::Value& value) const
    {
        return {column, ForColumn(value, Definition().columns[column], table_->bytesPerCharacter)};
    }

    // The row as it is now, unless somebody else deleted it or it no longer fits the condition.
    [[nodiscard]] std::optional<table::StoredRow> StillChosen(table::RowId id) const
    {
        std::optional<table::StoredRow> stored = table_->rows->Fetch(id);
        if (stored && !filter_.Passes(table_->rows->View(*stored))) stored.reset();
        return stored;
    }

    [[nodiscard]] std::optional<Change> DeletionOf(table::RowId id) const
    {
        if (!StillChosen(id)) return std::nullopt;
        return Change{Change::Kind::Delete, id, {}};
    }

    [[nodiscard]] std::optional<Change> UpdateOf(table::RowId id,
                                                 const std::vector<std::size_t>& columns,
                                                 const std::vector<Expression*>& values) const
    {
        const std::optional<table::StoredRow> stored = StillChosen(id);
        if (!stored) return std::nullopt;
        const format::RowView view = table_->rows->View(*stored);
        const StoredRowValues row(*table_->rows, view);
        Change change{Change::Kind::Update, id, {}};
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const format::ColumnDefinition& column = Definition().columns[columns[i]];
            if (column.autoNumber || column.autoGuid) throw NumberedError(3164);
            change.values.push_back(Converted(columns[i], Evaluate(*values[i], row, environment_)));
        }
        return change;
    }

    // Rule: a counter's number is drawn, and used up, before the row is stored.
    [[nodiscard]] Change InsertOf(const std::vector<std::size_t>& columns, const ValueRow& given)
    {
        std::vector<base::Value> values = NewRowValues(*table_, session_);
        for (std::size_t i = 0; i < columns.size(); ++i)
            values[columns[i]] = Converted(columns[i], given[i]).value;
        Change change{Change::Kind::Insert, {}, {}};
        for (std::size_t i = 0; i < values.size(); ++i) {
            const bool counter = Definition().columns[i].autoNumber;
            if (counter && values[i].IsNull()) values[i] = NextCounter(*table_, i);
            if (!values[i].IsNull()) change.values.push_back({i, std::move(values[i])});
        }
        return change;
    }

    const Session& session_;
    OnRowError onRowError_;
    TablePtr table_;
    Environment environment_;
    Filter filter_;
    std::vector<Maker> makers_;
};

}  // namespace

std::int32_t Execute(Statement statement, const Session& session, OnRowError onRowError)
{
    Action action(session, onRowError);
    return std::visit(action, statement);
}

}  // namespace jet::sql
