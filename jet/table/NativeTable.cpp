// SPDX-License-Identifier: Apache-2.0
#include "jet/table/NativeTable.h"

#include "base/NumberedError.h"
#include "jet/format/ValueCodec.h"
#include "jet/pages/UsageMap.h"
#include "jet/table/KeySearch.h"
#include "jet/table/ListedCursor.h"
#include "jet/table/LongValues.h"
#include "jet/table/RowChanges.h"
#include "jet/table/TableCursor.h"

namespace jet::table {

using format::TableDefinition;

NativeTable::NativeTable(std::shared_ptr<pages::Pager> pager, PageNumber definition,
                         std::string name)
    : pager_(std::move(pager)), name_(std::move(name)), definition_(*pager_, definition)
{
}

NativeTable::~NativeTable() = default;

const TableDefinition& NativeTable::Definition() const
{
    return definition_.Known();
}

std::uint32_t NativeTable::RowCount() const
{
    return StoredRowCount(*pager_, Definition().page);
}

std::unique_ptr<RowCursor> NativeTable::ScanFor(std::span<const Assignment> keys,
                                                Direction direction) const
{
    const auto& table = definition_.Current();
    // Who walks backwards mostly wants few rows, and finds them near the end.
    const auto missing = direction == Direction::Forward ? DerivedIndexes::Missing::Make
                                                         : DerivedIndexes::Missing::DoWithout;
    if (auto pages = derived_->PagesWith(*pager_, table, keys, missing))
        return std::make_unique<ListedCursor>(*pager_, table, *std::move(pages), direction);
    if (direction == Direction::Forward) return std::make_unique<TableCursor>(*pager_, table);
    return std::make_unique<ListedCursor>(
        *pager_, table, pages::UsageMap(*pager_, table->ownedPages).Pages(), direction);
}

std::optional<StoredRow> NativeTable::Fetch(RowId row) const
{
    const std::optional<FoundRow> found = FindRow(*pager_, definition_.Current()->page, row);
    if (!found) return std::nullopt;
    return StoredRow{row, {found->bytes.begin(), found->bytes.end()}};
}

format::RowView NativeTable::View(const StoredRow& row) const
{
    return {row.bytes, Definition()};
}

base::Value NativeTable::ValueOf(const format::RowView& row, std::size_t column) const
{
    return ReadColumn(*pager_, row, column);
}

std::optional<std::vector<RowId>> NativeTable::FindByKey(std::span<const Assignment> keys) const
{
    return RowsWithKey(*pager_, *definition_.Current(), keys);
}

void NativeTable::Write(const std::function<void(pages::WriteSet&)>& change)
{
    pager_->RequireWritable(Definition().page, name_);
    pages::Write(*pager_, change);
}

std::int32_t NativeTable::NextAutoNumber()
{
    std::int32_t next = 0;
    Write([&](pages::WriteSet& changes) {
        const PageNumber page = Definition().page;
        const auto last = static_cast<std::uint32_t>(LastAutoNumber(*pager_, page));
        const auto step = static_cast<std::uint32_t>(AutoNumberIncrement(*pager_, page));
        next = static_cast<std::int32_t>(last + step);  // goes round at the end
        SetLastAutoNumber(changes, page, next);
    });
    return next;
}

RowId NativeTable::Insert(std::span<const Assignment> values)
{
    RowId row;
    Write([&](pages::WriteSet& changes) { row = Insert(changes, values); });
    return row;
}

void NativeTable::Update(RowId row, std::span<const Assignment> values)
{
    Write([&](pages::WriteSet& changes) { Update(changes, row, values); });
}

void NativeTable::Delete(RowId row)
{
    Write([&](pages::WriteSet& changes) { Delete(changes, row); });
}

void NativeTable::Apply(const std::function<std::vector<Change>()>& make)
{
    Write([&](pages::WriteSet& together) {
        for (const Change& change : make()) {
            switch (change.kind) {
            case Change::Kind::Insert:
                static_cast<void>(Insert(together, change.values));
                break;
            case Change::Kind::Update:
                Update(together, change.row, change.values);
                break;
            case Change::Kind::Delete:
                // A change before this one may have taken the row with it.
                if (Fetch(change.row)) Delete(together, change.row);
                break;
            }
        }
    });
}

RowChanges NativeTable::ChangesIn(pages::WriteSet& changes)
{
    return {changes, *definition_.Current(), rules_.get()};
}

RowId NativeTable::Insert(pages::WriteSet& changes, std::span<const Assignment> values)
{
    return ChangesIn(changes).Insert(values);
}

void NativeTable::Update(pages::WriteSet& changes, RowId row, std::span<const Assignment> values)
{
    ChangesIn(changes).Update(row, values);
}

void NativeTable::Delete(pages::WriteSet& changes, RowId row)
{
    ChangesIn(changes).Delete(row);
}

}  // namespace jet::table
