// SPDX-License-Identifier: Apache-2.0
#include "jet/table/RowChanges.h"

#include "base/NumberedError.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/ValueCodec.h"
#include "jet/table/DefinitionPages.h"
#include "jet/table/KeyChanges.h"
#include "jet/table/LongValues.h"
#include "jet/table/RowBuilder.h"

#include <algorithm>

namespace jet::table {

namespace {

using format::ColumnDefinition;
using format::ColumnType;
using format::RowView;
using format::SlotKind;
using format::TableDefinition;

// The last value assigned to a column.
const Assignment* FindAssignment(std::span<const Assignment> values, std::size_t column)
{
    const auto found =
        std::find_if(values.rbegin(), values.rend(), [column](const Assignment& assignment) {
            return assignment.column == column;
        });
    return found == values.rend() ? nullptr : &*found;
}

ColumnReader Assigned(std::span<const Assignment> values)
{
    return [values](std::size_t column) {
        const Assignment* assignment = FindAssignment(values, column);
        return assignment == nullptr ? base::Value() : assignment->value;
    };
}

ColumnReader Stored(const pages::Pager& pager, const RowView& row)
{
    return [&pager, row](std::size_t column) { return ReadColumn(pager, row, column); };
}

ColumnReader AssignedOr(std::span<const Assignment> values, const ColumnReader& stored)
{
    return [values, stored](std::size_t column) {
        const Assignment* assignment = FindAssignment(values, column);
        return assignment == nullptr ? stored(column) : assignment->value;
    };
}

PageOwner OwnerOf(const TableDefinition& table)
{
    // A kept last page keeps a deleted row's place from becoming another row's.
    return {table.ownedPages, table.freePages, Raw(table.page), EmptyLastPage::Stays};
}

}  // namespace

base::Value ReadColumn(const pages::Pager& pager, const RowView& row, std::size_t column)
{
    const ColumnDefinition& definition = row.Table().columns[column];
    if (definition.type == ColumnType::Boolean) return row.Boolean(column);
    if (row.IsNull(column)) return {};
    if (!format::IsLongValue(definition.type))
        return format::DecodeValue(row.Field(column), definition);
    std::vector<std::byte> bytes = ReadLongValue(pager, row.Field(column));
    if (definition.type == ColumnType::Memo) return format::DecodeTextOf(bytes, definition);
    return bytes;
}

RowChanges::RowChanges(pages::WriteSet& changes, const TableDefinition& table,
                       const RowRules* rules)
    : changes_(changes), pager_(changes.Of()), table_(table), rules_(rules),
      rows_(changes, OwnerOf(table))
{
}

RowId RowChanges::Insert(std::span<const Assignment> values)
{
    RowBuilder builder(table_, values, pager_.Version());
    const ColumnReader after = Assigned(values);
    CheckRules(true, values, after);
    KeyChanges keys(pager_, table_, {}, after);
    keys.Check(nullptr);
    ChangedRow change{{}, RelatedValues(after)};

    const RowId row = rows_.Append(builder.Store(changes_));
    keys.Apply(changes_, row);
    ChangeRowCount(changes_, table_.page, 1);
    RaiseCounter(values);
    Follow(std::move(change));
    return row;
}

void RowChanges::Update(RowId row, std::span<const Assignment> values)
{
    const FoundRow found = Existing(row);
    const RowView view(found.bytes, table_);
    const ColumnReader stored = Stored(pager_, view);
    RowBuilder builder(view, values, pager_.Version());
    const ColumnReader after = AssignedOr(values, stored);
    CheckRules(false, values, after);
    KeyChanges keys(pager_, table_, stored, after);
    keys.Check(&row);
    ChangedRow change{RelatedValues(stored), RelatedValues(after)};

    for (std::size_t column = 0; column < table_.columns.size(); ++column)
        if (FindAssignment(values, column) != nullptr) FreeLongValue(view, column);
    Rewrite(row, builder.Store(changes_));
    keys.Apply(changes_, row);
    RaiseCounter(values);
    Follow(std::move(change));
}

void RowChanges::Delete(RowId row)
{
    const FoundRow found = Existing(row);
    const RowView view(found.bytes, table_);
    const ColumnReader stored = Stored(pager_, view);
    KeyChanges keys(pager_, table_, stored, {});
    ChangedRow change{RelatedValues(stored), {}};

    keys.Apply(changes_, row);
    for (std::size_t column = 0; column < table_.columns.size(); ++column)
        FreeLongValue(view, column);
    const pages::Page page = pager_.Read(row.page);
    const format::DataPage slots(page.Bytes());
    if (slots.Kind(row.slot) == SlotKind::Pointer) rows_.Remove(MovedRowId(slots.Row(row.slot)));
    rows_.Remove(row);
    ChangeRowCount(changes_, table_.page, -1);
    Follow(std::move(change));
}

FoundRow RowChanges::Existing(RowId row) const
{
    std::optional<FoundRow> found = FindRow(pager_, table_.page, row);
    if (!found) throw base::NumberedError(3167);
    return *std::move(found);
}

// Grows the row where it lies as long as its page has room, otherwise moves it.
void RowChanges::Rewrite(RowId row, format::Span bytes)
{
    const pages::Page page = pager_.Read(row.page);
    const format::DataPage slots(page.Bytes());
    if (slots.Kind(row.slot) == SlotKind::Pointer)
        return RewriteMoved(row, MovedRowId(slots.Row(row.slot)), bytes);
    if (rows_.Replace(row, bytes, SlotKind::Row)) return;
    rows_.Redirect(row, rows_.Put(bytes, SlotKind::Moved));
}

// A moved row comes home when it fits there again.
void RowChanges::RewriteMoved(RowId row, RowId moved, format::Span bytes)
{
    if (rows_.Replace(row, bytes, SlotKind::Row)) return rows_.Remove(moved);
    if (rows_.Replace(moved, bytes, SlotKind::Moved)) return;
    rows_.Redirect(row, rows_.Put(bytes, SlotKind::Moved));
    rows_.Remove(moved);
}

void RowChanges::FreeLongValue(const RowView& row, std::size_t column)
{
    const ColumnDefinition& definition = table_.columns[column];
    if (!format::IsLongValue(definition.type) || row.IsNull(column)) return;
    LongValueStore(changes_, definition).Free(row.Field(column));
}

void RowChanges::CheckRules(bool isNew, std::span<const Assignment> values,
                            const ColumnReader& valueOf) const
{
    if (rules_ != nullptr) rules_->Check({isNew, values, valueOf});
}

// Taken before the first change: what was read shows the write set's further changes.
std::optional<ColumnValues> RowChanges::RelatedValues(const ColumnReader& valueOf) const
{
    ColumnValues values;
    if (rules_ == nullptr) return values;
    for (const format::NamedIndex& index : table_.namedIndexes) {
        if (index.kind != format::kRelationship) continue;
        for (const format::IndexColumn& column : table_.indexes[index.tree].columns) {
            const std::optional<std::size_t> place = table_.FindNumber(column.columnNumber);
            if (place && !values.contains(*place)) values.emplace(*place, valueOf(*place));
        }
    }
    return values;
}

void RowChanges::Follow(ChangedRow row)
{
    const bool related = (row.before && !row.before->empty()) || (row.after && !row.after->empty());
    if (related) rules_->Follow(changes_, row);
}

void RowChanges::RaiseCounter(std::span<const Assignment> values)
{
    const std::optional<std::size_t> column = table_.FindAutoNumber();
    const Assignment* assignment = column ? FindAssignment(values, *column) : nullptr;
    const auto* value = assignment == nullptr ? nullptr : assignment->value.As<std::int32_t>();
    if (value != nullptr && *value > LastAutoNumber(pager_, table_.page))
        SetLastAutoNumber(changes_, table_.page, *value);
}

}  // namespace jet::table
