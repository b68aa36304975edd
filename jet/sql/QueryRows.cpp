// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/QueryRows.h"

#include "base/NumberedError.h"
#include "jet/format/NumberColumn.h"
#include "jet/sql/Aggregates.h"

#include <algorithm>
#include <map>

namespace jet::sql {

namespace {

using base::Value;

// A row on its way: what it gives out and what it is sorted by.
struct Candidate {
    ValueRow values, keys;
    table::RowId id;
};

// Nulls before everything else.
int CompareForOrder(const Value& left, const Value& right, format::SortOrder order)
{
    if (left.IsNull() || right.IsNull()) return (right.IsNull() ? 1 : 0) - (left.IsNull() ? 1 : 0);
    return *Compare(left, right, order);
}

struct RowLess {
    format::SortOrder order;
    bool operator()(const ValueRow& left, const ValueRow& right) const
    {
        for (std::size_t i = 0; i < left.size(); ++i) {
            const int outcome = CompareForOrder(left[i], right[i], order);
            if (outcome != 0) return outcome < 0;
        }
        return false;
    }
};

class Maker {
public:
    explicit Maker(const Query& query) : query_(query) {}

    // The output values and sort keys of one row or group.
    [[nodiscard]] Candidate Project(const Row& row, std::span<const Value> aggregates) const
    {
        Candidate made;
        for (const OutputField& field : query_.Fields())
            made.values.push_back(
                field.column ? row.Value(*field.column)
                             : Evaluate(*field.expression, row, query_.World(), aggregates));
        AddKeys(made, row, aggregates);
        return made;
    }

    void AddKeys(Candidate& made, const Row& row, std::span<const Value> aggregates) const
    {
        for (const SortKey& key : query_.SortKeys())
            made.keys.push_back(KeyOf(key, row, aggregates));
    }

    // Sorts, and cuts what TOP leaves out.
    void Finish(std::vector<Candidate>& rows) const
    {
        const auto less = [&](const Candidate& a, const Candidate& b) {
            return CompareKeys(a, b) < 0;
        };
        if (!query_.SortKeys().empty()) std::stable_sort(rows.begin(), rows.end(), less);
        const std::optional<std::int32_t> top = query_.Statement().top;
        if (!top || static_cast<std::size_t>(*top) >= rows.size()) return;
        auto end = static_cast<std::size_t>(*top);
        while (end > 0 && end < rows.size() && !query_.SortKeys().empty() &&
               CompareKeys(rows[end - 1], rows[end]) == 0)
            ++end;
        rows.resize(end);
    }

private:
    [[nodiscard]] Value KeyOf(const SortKey& key, const Row& row,
                              std::span<const Value> aggregates) const
    {
        const Expression* expression = key.expression;
        if (key.output) {
            const OutputField& field = query_.Fields()[*key.output];
            if (field.column) return row.Value(*field.column);
            expression = field.expression;
        }
        return Evaluate(*expression, row, query_.World(), aggregates);
    }

    [[nodiscard]] int CompareKeys(const Candidate& left, const Candidate& right) const
    {
        for (std::size_t i = 0; i < left.keys.size(); ++i) {
            const int outcome = CompareForOrder(left.keys[i], right.keys[i], query_.World().order);
            if (outcome != 0) return query_.SortKeys()[i].descending ? -outcome : outcome;
        }
        return 0;
    }

    const Query& query_;
};

// One group while its rows go by.
struct Group {
    std::optional<table::StoredRow> first;  // stands for all in expressions of the group's keys
    std::vector<Accumulator> accumulators;
};

Group NewGroup(const Query& query)
{
    Group group;
    for (const Expression* const aggregate : query.Aggregates())
        group.accumulators.emplace_back(AggregateNamed(aggregate->name), query.World().order);
    return group;
}

// What an aggregate is given of each row: an expression's value, or nothing of Count(*).
struct Input {
    const Expression* expression = nullptr;
    // The expression is this column alone, and the aggregate needs no more than its number.
    std::optional<format::NumberColumn> number;
};

Input InputOf(const Expression& aggregate, const table::RowSource& source)
{
    if (aggregate.operands.empty()) return {};
    Input input{aggregate.operands[0].get(), std::nullopt};
    if (input.expression->kind != ExpressionKind::Name ||
        !GathersNumbers(AggregateNamed(aggregate.name)))
        return input;
    input.number = format::NumberColumn::Of(source.Definition(), input.expression->place);
    // Money is added up exactly.
    if (input.number && input.number->Type() == format::ColumnType::Currency) input.number.reset();
    return input;
}

std::vector<Input> InputsOf(const Query& query)
{
    std::vector<Input> inputs;
    for (const Expression* const aggregate : query.Aggregates())
        inputs.push_back(InputOf(*aggregate, *query.Table()->rows));
    return inputs;
}

void AddRow(Accumulator& accumulator, const Input& input, const Query& query,
            const format::RowView& row)
{
    if (input.number) {
        if (const std::optional<double> number = input.number->In(row))
            accumulator.AddNumber(*number);
    } else if (input.expression != nullptr) {
        const StoredRowValues values(*query.Table()->rows, row);
        accumulator.Add(Evaluate(*input.expression, values, query.World()));
    } else {
        accumulator.AddRow();
    }
}

// One row without FROM.
std::vector<Candidate> ConstantRow(const Query& query)
{
    std::vector<Candidate> rows;
    rows.push_back(Maker(query).Project(NoRow(), {}));
    return rows;
}

using Groups = std::map<ValueRow, Group, RowLess>;

Group& GroupOf(const format::RowView& row, const Query& query, Groups& groups)
{
    const StoredRowValues values(*query.Table()->rows, row);
    ValueRow keys;
    for (const ExpressionPtr& key : query.Statement().groupBy)
        keys.push_back(Evaluate(*key, values, query.World()));
    const auto [place, isNew] = groups.try_emplace(std::move(keys));
    if (isNew) place->second = NewGroup(query);
    return place->second;
}

Groups GroupsOf(const Query& query)
{
    const table::RowSource& source = *query.Table()->rows;
    const std::vector<Input> inputs = InputsOf(query);
    Groups groups(RowLess{query.World().order});
    // Without GROUP BY there is one group, rows or none.
    Group* const only = query.Statement().groupBy.empty()
                            ? &groups.emplace(ValueRow{}, NewGroup(query)).first->second
                            : nullptr;
    ForEachRow(source, query.Where(), [&](table::RowId id, const format::RowView& row) {
        Group& group = only != nullptr ? *only : GroupOf(row, query, groups);
        if (!group.first) group.first = source.Fetch(id);
        for (std::size_t i = 0; i < inputs.size(); ++i)
            AddRow(group.accumulators[i], inputs[i], query, row);
    });
    return groups;
}

// The output row of a group; nothing when HAVING leaves it out.
std::optional<Candidate> RowOf(const Group& group, const Query& query, const Row& first)
{
    ValueRow results;
    for (const Accumulator& accumulator : group.accumulators)
        results.push_back(accumulator.Result());
    const Condition& having = query.Statement().having;
    if (having.expression &&
        TruthOf(Evaluate(*having.expression, first, query.World(), results)) != Truth::True)
        return std::nullopt;
    return Maker(query).Project(first, results);
}

std::vector<Candidate> GroupedRows(const Query& query)
{
    const table::RowSource& source = *query.Table()->rows;
    std::vector<Candidate> rows;
    for (const auto& [keys, group] : GroupsOf(query)) {
        std::optional<Candidate> made;
        if (group.first) {
            const format::RowView view = source.View(*group.first);
            made = RowOf(group, query, StoredRowValues(source, view));
        } else {
            made = RowOf(group, query, NoRow());
        }
        if (made) rows.push_back(std::move(*made));
    }
    return rows;
}

std::vector<Candidate> PlainRows(const Query& query)
{
    const Maker maker(query);
    std::vector<Candidate> rows;
    const table::RowSource& source = *query.Table()->rows;
    ForEachRow(source, query.Where(), [&](table::RowId, const format::RowView& row) {
        rows.push_back(maker.Project(StoredRowValues(source, row), {}));
    });
    return rows;
}

// Equal rows once, in the order of their values.
void MakeDistinct(std::vector<Candidate>& rows, const Query& query)
{
    for (const SortKey& key : query.SortKeys()) {
        const auto gives = [&](const OutputField& field) {
            return key.output || (field.column && key.expression->kind == ExpressionKind::Name &&
                                  *field.column == key.expression->place);
        };
        if (std::none_of(query.Fields().begin(), query.Fields().end(), gives))
            throw base::NumberedError(3093, {key.expression->text});
    }
    const RowLess less{query.World().order};
    std::stable_sort(rows.begin(), rows.end(), [&](const Candidate& a, const Candidate& b) {
        return less(a.values, b.values);
    });
    const auto same = [&](const Candidate& a, const Candidate& b) {
        return !less(a.values, b.values) && !less(b.values, a.values);
    };
    rows.erase(std::unique(rows.begin(), rows.end(), same), rows.end());
}

}  // namespace

std::vector<table::RowId> RowIdsOf(const Query& query)
{
    const Maker maker(query);
    std::vector<Candidate> rows;
    const table::RowSource& source = *query.Table()->rows;
    ForEachRow(source, query.Where(), [&](table::RowId id, const format::RowView& row) {
        Candidate found;
        found.id = id;
        maker.AddKeys(found, StoredRowValues(source, row), {});
        rows.push_back(std::move(found));
    });
    maker.Finish(rows);
    std::vector<table::RowId> ids;
    ids.reserve(rows.size());
    for (const Candidate& row : rows)
        ids.push_back(row.id);
    return ids;
}

std::vector<ValueRow> RowsOf(const Query& query)
{
    std::vector<Candidate> rows;
    if (query.Table() == nullptr) {
        rows = ConstantRow(query);
    } else {
        rows = query.IsGrouped() ? GroupedRows(query) : PlainRows(query);
    }
    if (query.Statement().distinct) MakeDistinct(rows, query);
    Maker(query).Finish(rows);
    std::vector<ValueRow> values;
    values.reserve(rows.size());
    for (Candidate& row : rows)
        values.push_back(std::move(row.values));
    return values;
}

}  // namespace jet::sql
