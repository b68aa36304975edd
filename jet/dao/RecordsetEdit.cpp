// SPDX-License-Identifier: Apache-2.0
// Field values and the pending edit of a record set.
#include "base/NumberedError.h"
#include "jet/dao/RecordsetState.h"
#include "jet/format/ValueCodec.h"
#include "jet/sql/StoreValue.h"

namespace dao {

using base::NumberedError;
using base::Value;
using jet::sql::OutputField;
using jet::table::Assignment;

// The columns of the table as the pending edit has them.
class PendingRow final : public jet::sql::Row {
public:
    explicit PendingRow(const Recordset::State& state) : state_(state) {}
    [[nodiscard]] base::Value Value(std::size_t column) const override
    {
        return state_.ColumnValue(column);
    }

private:
    const Recordset::State& state_;
};

Value Recordset::State::ColumnValue(std::size_t column) const
{
    if (edit.mode != EditMode::None && edit.assigned[column]) return *edit.assigned[column];
    if (edit.mode == EditMode::Add) return edit.initial[column];
    const auto read = [&](const jet::format::RowView& row) {
        return Source().ValueOf(row, column);
    };
    const bool isLong = jet::format::IsLongValue(Source().Definition().columns[column].type);
    return isLong ? OfStoredRow(read) : read(image.View(Source()));
}

// A long value lies outside the row: after another program changed the row, the kept copy leads to
// pages that may be another row's.
Value Recordset::State::OfStoredRow(const ReadRow& read) const
{
    Value value;
    Read(Look::OnlyIfOld, [&] {
        const std::optional<jet::table::StoredRow> now = Source().Fetch(image.Id());
        if (!now) throw NumberedError(3167);
        value = read(Source().View(*now));
    });
    return value;
}

Value Recordset::State::ValueOf(std::size_t field) const
{
    if (edit.mode == EditMode::None) {
        const Spot spot = RequireRow();
        if (ofValues) return values[jet::format::Raw(rows->Id(spot).page)][field];
        const OutputField& stored = query->Fields()[field];
        const auto read = [&](const jet::format::RowView& row) {
            return query->ValueOf(row, field);
        };
        const bool inRow = stored.column && !jet::format::IsLongValue(stored.type);
        return inRow ? read(image.View(Source())) : OfStoredRow(read);
    }
    const OutputField& output = query->Fields()[field];
    if (output.column) return ColumnValue(*output.column);
    return Evaluate(*output.expression, PendingRow(*this), query->World());
}

void Recordset::State::Assign(std::size_t place, const Value& value)
{
    const OutputField& field = query->Fields()[place];
    if (edit.mode == EditMode::None) throw NumberedError(3020);
    if (!field.column) throw NumberedError(3164);
    const jet::format::ColumnDefinition& column = Source().Definition().columns[*field.column];
    if (column.autoNumber || column.autoGuid) throw NumberedError(3164);
    edit.assigned[*field.column] = jet::sql::ForColumn(value, column, bytesPerCharacter);
}

bool Recordset::State::Updatable() const
{
    return !ofValues && !readOnly;
}

void Recordset::State::RequireUpdatable() const
{
    if (type == RecordsetType::Snapshot || type == RecordsetType::ForwardOnly)
        throw NumberedError(3251);
    if (!Updatable()) throw NumberedError(3027);
}

void Recordset::State::Edit()
{
    RequireUpdatable();
    DropEdit();
    RequireRow();
    const RowId row = rows->Id(*current);
    EditBuffer made;
    made.marked = RequireOpen()->core->MarkEdited(Pages(), row);
    made.lock = Pages().LockPage(row.page);
    RequireUnchanged();
    made.ownCommits = Pages().OwnCommits();
    made.mode = EditMode::InProgress;
    made.assigned.resize(Source().Definition().columns.size());
    edit = std::move(made);
}

// Whoever changed the row since it was read comes first; a second attempt sees his change.
void Recordset::State::RequireUnchanged()
{
    std::optional<jet::table::StoredRow> now;
    Read(Look::Always, [&] { now = Source().Fetch(rows->Id(*current)); });
    const bool changed = now && image.IsSet() && now->bytes != image.Bytes();
    image.Set(std::move(now));
    if (!image.IsSet()) throw NumberedError(3167);
    if (changed) throw NumberedError(3197);
}

void Recordset::State::AddNew()
{
    RequireUpdatable();
    const std::shared_ptr<Database::State> owner = RequireOpen();
    static_cast<void>(owner->Pages());
    EditBuffer made;
    made.mode = EditMode::Add;
    made.initial = NewRowValues(*query->Table(), owner->session);
    const auto& columns = Source().Definition().columns;
    made.assigned.resize(columns.size());
    // The number is used up even if the row is never stored.
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].autoNumber) made.initial[i] = jet::sql::NextCounter(*query->Table(), i);
    edit = std::move(made);
}

void Recordset::State::Update()
{
    switch (edit.mode) {
    case EditMode::None:
        throw NumberedError(3020);
    case EditMode::InProgress:
        return WriteEdit();
    case EditMode::Add:
        return WriteNew();
    }
}

// Only the assigned fields: the others may have been changed by somebody else meanwhile.
void Recordset::State::WriteEdit()
{
    std::vector<Assignment> changes;
    for (std::size_t i = 0; i < edit.assigned.size(); ++i) {
        if (edit.assigned[i]) changes.push_back({i, *edit.assigned[i]});
    }
    const RowId row = rows->Id(*current);
    // Other sets of this program may change other fields of the row between Edit and Update; a
    // program that does not keep to our lock may not.
    if (Pages().OwnCommits() == edit.ownCommits) RequireUnchanged();
    if (!changes.empty()) Source().Update(row, changes);
    lastModified = row;
    DropEdit();
    Read(Look::OnlyIfOld, [&] { Fetch(); });
}

void Recordset::State::WriteNew()
{
    std::vector<Assignment> row;
    for (std::size_t i = 0; i < edit.assigned.size(); ++i) {
        Value value = ColumnValue(i);
        // A null that was put there is held against a rule, one that was always there is not.
        if (edit.assigned[i] || !value.IsNull()) row.push_back({i, std::move(value)});
    }
    static_cast<void>(Pages());
    const RowId added = Source().Insert(row);
    rows->Add(added);
    lastModified = added;
    DropEdit();
    // A set that was empty stands behind its only row: no current record.
    if (bof && eof) bof = false;
}

void Recordset::State::CancelUpdate()
{
    if (edit.mode == EditMode::None) throw NumberedError(3020);
    DropEdit();
}

void Recordset::State::Delete()
{
    RequireUpdatable();
    DropEdit();
    const Spot spot = RequireRow();
    static_cast<void>(Pages());
    Source().Delete(rows->Id(spot));
    rows->MakeHole(spot);
    image.Reset();
}

}  // namespace dao
