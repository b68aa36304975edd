// SPDX-License-Identifier: Apache-2.0
// The Find methods of a record set.
#include "base/NumberedError.h"
#include "jet/dao/RecordsetState.h"
#include "jet/sql/Parser.h"

namespace dao {

using base::NumberedError;
using jet::sql::OutputField;
using jet::sql::Scope;
using jet::sql::Truth;

namespace {

// The output fields as names of a criterion. Rule: a field that is a column stands at the column's
// place, so that the criterion can be tried on stored rows.
Scope ScopeOf(const jet::sql::Query& query, bool byColumn)
{
    Scope scope;
    const std::vector<OutputField>& fields = query.Fields();
    for (std::size_t i = 0; i < fields.size(); ++i)
        scope.fields.push_back(
            {fields[i].name, jet::sql::KindOf(fields[i].type), byColumn ? *fields[i].column : i});
    return scope;
}

bool HasOnlyColumns(const jet::sql::Query& query)
{
    for (const OutputField& field : query.Fields())
        if (!field.column) return false;
    return true;
}

// Output fields of a row that was worked out.
class ValueRowFields final : public jet::sql::Row {
public:
    explicit ValueRowFields(const jet::sql::ValueRow& row) : row_(row) {}
    [[nodiscard]] base::Value Value(std::size_t field) const override { return row_[field]; }

private:
    const jet::sql::ValueRow& row_;
};

// Output fields of a stored row.
class StoredRowFields final : public jet::sql::Row {
public:
    StoredRowFields(const jet::sql::Query& query, const jet::format::RowView& row)
        : query_(query), row_(row)
    {
    }
    [[nodiscard]] base::Value Value(std::size_t field) const override
    {
        return query_.ValueOf(row_, field);
    }

private:
    const jet::sql::Query& query_;
    const jet::format::RowView& row_;
};

}  // namespace

// A criterion, tried on rows of either kind.
class Criterion {
public:
    Criterion(std::string_view text, const jet::sql::Query& query, bool ofValues) : query_(query)
    {
        const bool byColumn = !ofValues && HasOnlyColumns(query);
        expression_ = jet::sql::ParseCriteria(text, query.World().now());
        BindCriteria(*expression_, ScopeOf(query, byColumn));
        if (byColumn) filter_.emplace(*expression_, *query.Table()->rows, query.World());
    }

    // The criterion as a filter of stored rows, when it names what an index may answer.
    [[nodiscard]] const jet::sql::Filter* Keyed() const
    {
        return filter_ && !filter_->Keys().empty() ? &*filter_ : nullptr;
    }
    [[nodiscard]] bool Fits(const jet::format::RowView& row) const
    {
        if (filter_) return filter_->Passes(row);
        return IsTrue(StoredRowFields(query_, row));
    }
    [[nodiscard]] bool Fits(const jet::sql::ValueRow& row) const
    {
        return IsTrue(ValueRowFields(row));
    }

private:
    [[nodiscard]] bool IsTrue(const jet::sql::Row& row) const
    {
        return jet::sql::TruthOf(Evaluate(*expression_, row, query_.World())) == Truth::True;
    }

    const jet::sql::Query& query_;
    jet::sql::ExpressionPtr expression_;
    std::optional<jet::sql::Filter> filter_;
};

void Recordset::State::Find(std::string_view criteria, From from, Direction direction)
{
    if (type == RecordsetType::Table || type == RecordsetType::ForwardOnly)
        throw NumberedError(3251);
    const Criterion criterion(criteria, *query, ofValues);
    if (from == From::CurrentRow && (bof || eof || !current)) throw NumberedError(3021);
    std::optional<Spot> found;
    Read(Look::Always, [&] { found = Search(criterion, from, direction); });
    DropEdit();
    noMatch = !found;
    if (found) Read(Look::OnlyIfOld, [&] { StandOn(*found); });
}

// The rows that fit, wherever they lie; of those the first on the way that is in the set.
std::optional<Spot> Recordset::State::SearchByKey(const jet::sql::Filter& keyed, From from,
                                                  Direction direction)
{
    const bool forward = direction == Direction::Forward;
    const auto comesBefore = [&](Spot one, Spot other) {
        return forward ? RowList::IsBefore(one, other) : RowList::IsBefore(other, one);
    };
    std::optional<Spot> best;
    jet::sql::RowFinder finder(Source(), keyed);
    while (finder.Next()) {
        const std::optional<Spot> spot = rows->Locate(finder.Id());
        if (!spot || rows->IsHole(*spot)) continue;
        if (from == From::CurrentRow && !comesBefore(*current, *spot)) continue;
        if (!best || comesBefore(*spot, *best)) best = spot;
        // What follows lies behind it.
        if (forward && rows->IsInStorageOrder() && spot->part != Spot::Part::Added) break;
    }
    return best;
}

std::optional<Spot> Recordset::State::Search(const Criterion& criterion, From from,
                                             Direction direction)
{
    if (const jet::sql::Filter* const keyed = criterion.Keyed())
        return SearchByKey(*keyed, from, direction);
    const bool forward = direction == Direction::Forward;
    const auto step = [&](Spot spot) { return forward ? rows->Next(spot) : rows->Previous(spot); };
    std::optional<Spot> spot;
    if (from == From::CurrentRow) {
        spot = step(*current);
    } else {
        spot = forward ? rows->First() : rows->Last();
    }
    for (; spot; spot = step(*spot)) {
        const RowId row = rows->Id(*spot);
        if (ofValues) {
            if (criterion.Fits(values[jet::format::Raw(row.page)])) return spot;
        } else if (const auto stored = Source().Fetch(row)) {
            if (criterion.Fits(Source().View(*stored))) return spot;
        }
    }
    return std::nullopt;
}

}  // namespace dao
