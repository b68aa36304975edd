// SPDX-License-Identifier: Apache-2.0
#include "jet/table/LongValues.h"

#include "base/NumberedError.h"
#include "jet/format/RowPointer.h"
#include "jet/table/StoredRows.h"

#include <algorithm>

namespace jet::table {

namespace {

using format::kLongValueHeaderSize;
using format::LongValueForm;
using format::LongValueHeader;

[[noreturn]] void Damaged(const char* what)
{
    throw base::NumberedError(3343).At(std::string("long value: ") + what);
}

PageOwner OwnerOf(const format::ColumnDefinition& column)
{
    if (!column.ownedPages || !column.freePages) throw base::NumberedError(3251);
    return {*column.ownedPages, *column.freePages, format::kLongValueOwner};
}

// One piece of a chain, or the whole of a single value.
format::Span PieceAt(const pages::Page& page, RowId row)
{
    const format::DataPage view = OwnedPage(page.Bytes(), format::kLongValueOwner);
    if (view.Kind(row.slot) != format::SlotKind::Row) Damaged("deleted piece");
    return view.Row(row.slot);
}

// Calls visit(place, data) for each piece. The chain ends just where its declared length does: one
// in a circle, or one that took over another's pieces, would give a value that nobody stored.
template <class Visitor>
void ForEachPiece(const pages::Pager& pager, const LongValueHeader& header, Visitor visit)
{
    RowId next = header.first;
    std::size_t left = header.length;
    while (left > 0) {
        if (next.page == PageNumber::None) Damaged("chain ends too early");
        const pages::Page page = pager.Read(next.page);
        const format::Span piece = PieceAt(page, next);
        const RowId place = next;
        next = format::ReadRowPointer(piece, 0);
        const format::Span data = piece.subspan(format::kRowPointerSize);
        if (data.empty()) Damaged("piece without data");
        if (data.size() > left) Damaged("chain longer than its value");
        visit(place, data);
        left -= data.size();
    }
    if (next != RowId{}) Damaged("chain goes on behind its value");
}

LongValueHeader HeaderOf(const pages::Pager& pager, format::Span field)
{
    const LongValueHeader header = format::ReadLongValueHeader(field);
    // A chain in a circle would go on to its declared length, so that must be a possible one.
    if (header.length / pager.Version().pageSize > pager.PageCount()) Damaged("too long");
    return header;
}

std::vector<std::byte> Copy(format::Span bytes)
{
    return {bytes.begin(), bytes.end()};
}

}  // namespace

std::vector<std::byte> ReadLongValue(const pages::Pager& pager, format::Span field)
{
    if (field.empty()) return {};
    const LongValueHeader header = HeaderOf(pager, field);
    if (header.form == LongValueForm::InRow)
        return Copy(format::Slice(field, kLongValueHeaderSize, header.length));
    if (header.form == LongValueForm::Single) {
        const pages::Page page = pager.Read(header.first.page);
        return Copy(format::Slice(PieceAt(page, header.first), 0, header.length));
    }
    std::vector<std::byte> value;
    value.reserve(header.length);
    ForEachPiece(pager, header, [&value](RowId, format::Span data) {
        value.insert(value.end(), data.begin(), data.end());
    });
    return value;
}

std::vector<std::byte> LongValueInRow(format::Span value)
{
    std::vector<std::byte> field(kLongValueHeaderSize);
    format::WriteLongValueHeader(
        field, {LongValueForm::InRow, static_cast<std::uint32_t>(value.size()), {}, 0});
    field.insert(field.end(), value.begin(), value.end());
    return field;
}

LongValueStore::LongValueStore(pages::WriteSet& changes, const format::ColumnDefinition& column)
    : changes_(changes), limits_(*changes.Of().Version().longValue), rows_(changes, OwnerOf(column))
{
}

std::vector<std::byte> LongValueStore::Store(format::Span value)
{
    LongValueHeader header;
    header.length = static_cast<std::uint32_t>(value.size());
    if (value.size() <= limits_.single) {
        header.form = LongValueForm::Single;
        header.first = rows_.Put(value, format::SlotKind::Row);
    } else {
        header.form = LongValueForm::Chain;
        header.first = StoreChain(value);
    }
    std::vector<std::byte> field(kLongValueHeaderSize);
    format::WriteLongValueHeader(field, header);
    return field;
}

// From the last piece to the first, so that each knows where the next one lies.
RowId LongValueStore::StoreChain(format::Span value)
{
    RowId next;
    std::size_t end = value.size();
    while (end > 0) {
        const std::size_t begin = (end - 1) / limits_.piece * limits_.piece;
        std::vector<std::byte> piece(format::kRowPointerSize);
        format::WriteRowPointer(piece, 0, next);
        piece.insert(piece.end(), value.begin() + static_cast<std::ptrdiff_t>(begin),
                     value.begin() + static_cast<std::ptrdiff_t>(end));
        next = rows_.PutAlone(piece);
        end = begin;
    }
    return next;
}

void LongValueStore::Free(format::Span field)
{
    if (field.empty()) return;
    const LongValueHeader header = HeaderOf(changes_.Of(), field);
    std::vector<RowId> pieces;
    if (header.form == LongValueForm::Single) {
        static_cast<void>(PieceAt(changes_.Of().Read(header.first.page), header.first));
        pieces.push_back(header.first);
    } else if (header.form == LongValueForm::Chain) {
        ForEachPiece(changes_.Of(), header,
                     [&pieces](RowId place, format::Span) { pieces.push_back(place); });
    }
    for (const RowId piece : pieces)
        rows_.Remove(piece);
}

}  // namespace jet::table
