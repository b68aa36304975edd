// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TableDefinitionWriter.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/ByteWriter.h"
#include "jet/format/TableDefinitionLayout.h"

#include <algorithm>

namespace jet::format {

namespace {

constexpr TableDefinitionLayout kLayout = kTableDefinitionJet4;
constexpr std::size_t kFreeBytesAt = 2;
// Marks that stand in every definition and mean nothing to a reader.
constexpr std::uint32_t kDefinitionMark = 1625, kIndexMark = 1923;
constexpr std::uint32_t kIncrement = 1;
constexpr std::uint8_t kOrdinaryTableKind = 0x4E;
constexpr std::uint16_t kEnd = 0xFFFF;  // of the long-value maps

void PutRowPointer(ByteWriter& out, RowId row)
{
    out.U32((Raw(row.page) << 8) | row.slot);
}

void PutName(ByteWriter& out, std::string_view name)
{
    const std::u16string units = base::ToUtf16(name);
    out.U16(static_cast<std::uint16_t>(2 * units.size()));
    for (const char16_t unit : units)
        out.U16(unit);
}

void PutHeader(ByteWriter& out, const TableDefinition& table)
{
    out.U16(kDefinitionPage);
    out.U16(0);  // free bytes, page by page
    out.U32(0);  // next page
    out.U32(0);  // length, when it is known
    out.U32(kDefinitionMark);
    out.U32(table.rowCount);
    out.U32(table.lastAutoNumber);
    out.U32(kIncrement);
    out.Zeros(12);
    out.U8(table.systemTable ? kSystemTableKind : kOrdinaryTableKind);
    out.U16(table.columnCounter);
    out.U16(table.variableColumnCounter);
    out.U16(static_cast<std::uint16_t>(table.columns.size()));
    out.U32(static_cast<std::uint32_t>(table.namedIndexes.size()));
    out.U32(static_cast<std::uint32_t>(table.indexes.size()));
    PutRowPointer(out, table.ownedPages);
    PutRowPointer(out, table.freePages);
}

void PutColumn(ByteWriter& out, const ColumnDefinition& column)
{
    out.U8(static_cast<std::uint8_t>(column.type));
    out.U32(kDefinitionMark);
    out.U16(column.number);
    out.U16(column.variableIndex);
    out.U16(column.ordinal);
    if (column.type == ColumnType::Numeric) {
        out.U8(column.precision);
        out.U8(column.scale);
    } else {
        out.U16(column.sortOrder.language);
    }
    out.U8(0);
    out.U8(column.sortOrder.version);
    out.U8(column.flags);
    out.U8(column.compressed ? kColumnCompressed : 0);
    out.U32(0);
    out.U16(column.fixed ? column.fixedOffset : std::uint16_t{0});
    out.U16(column.length);
}

void PutIndex(ByteWriter& out, const IndexDefinition& index)
{
    out.U32(kIndexMark);
    for (std::size_t i = 0; i < kIndexJet4.columnPlaces; ++i) {
        const bool used = i < index.columns.size();
        out.U16(used ? index.columns[i].columnNumber : kNoColumn);
        out.U8(used && index.columns[i].ascending ? 1 : 0);
    }
    PutRowPointer(out, index.usageMap);
    out.U32(Raw(index.root));
    out.U32(0);
    out.U8(index.flags);
    out.Zeros(5);
}

void PutNamedIndex(ByteWriter& out, const NamedIndex& index)
{
    out.U32(kDefinitionMark);
    out.U32(index.number);
    out.U32(index.tree);
    out.U8(index.relationKind);
    out.U32(index.relatedIndex);
    out.U32(Raw(index.relatedTable));
    out.U8(index.cascadeUpdates);
    out.U8(index.cascadeDeletes);
    out.U8(index.kind);
    out.U32(0);
}

void PutLongValueMaps(ByteWriter& out, const TableDefinition& table)
{
    for (const ColumnDefinition& column : table.columns) {
        if (!column.ownedPages) continue;
        out.U16(column.number);
        PutRowPointer(out, *column.ownedPages);
        PutRowPointer(out, column.freePages.value_or(RowId{}));
    }
    out.U16(kEnd);
}

}  // namespace

TableDefinitionWriter::TableDefinitionWriter(const TableDefinition& table,
                                             const FileVersion& version)
    : pageSize_(version.pageSize)
{
    if (version.code != kJet4.code) throw base::NumberedError(3041);
    ByteWriter out;
    PutHeader(out, table);
    out.Zeros(kLayout.statisticsSize * table.indexes.size());
    for (const ColumnDefinition& column : table.columns)
        PutColumn(out, column);
    for (const ColumnDefinition& column : table.columns)
        PutName(out, column.name);
    for (const IndexDefinition& index : table.indexes)
        PutIndex(out, index);
    for (const NamedIndex& index : table.namedIndexes)
        PutNamedIndex(out, index);
    for (const NamedIndex& index : table.namedIndexes)
        PutName(out, index.name);
    PutLongValueMaps(out, table);
    WriteU32(out.Written(), kLayout.length, static_cast<std::uint32_t>(out.Size()));
    joined_ = out.Take();
}

std::size_t TableDefinitionWriter::PageCount() const
{
    const std::size_t content = pageSize_ - kLayout.pageHeader;
    return (joined_.size() - kLayout.pageHeader + content - 1) / content;
}

void TableDefinitionWriter::WritePage(std::size_t place, PageNumber next, MutableSpan page) const
{
    const std::size_t content = pageSize_ - kLayout.pageHeader;
    const std::size_t from = kLayout.pageHeader + place * content;
    const Span part = Span(joined_).subspan(from, std::min(content, joined_.size() - from));
    std::fill(page.begin(), page.end(), std::byte{0});
    WriteU16(page, 0, kDefinitionPage);
    WriteU32(page, kLayout.next, Raw(next));
    std::copy(part.begin(), part.end(),
              page.begin() + static_cast<std::ptrdiff_t>(kLayout.pageHeader));
    // The last page tells its free bytes, less the header's once more.
    const std::size_t free = std::max(content - part.size(), kLayout.pageHeader);
    WriteU16(page, kFreeBytesAt, static_cast<std::uint16_t>(free - kLayout.pageHeader));
}

}  // namespace jet::format
