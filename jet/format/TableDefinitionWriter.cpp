// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TableDefinitionWriter.h"

#include "jet/format/ByteWriter.h"
#include "jet/format/RowPointer.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/ValueCodec.h"

#include <algorithm>

namespace jet::format {

namespace {

// Marks that stand in every definition and mean nothing to a reader.
constexpr std::uint32_t kDefinitionMark = 1625, kIndexMark = 1923;
constexpr std::uint16_t kPageMark = 0x4356;  // "VC"
constexpr std::uint32_t kIncrement = 1;
constexpr std::uint8_t kOrdinaryTableKind = 0x4E;
constexpr std::uint16_t kEnd = 0xFFFF;  // of the long-value maps

// In the text form of `column`.
void PutName(ByteWriter& out, std::string_view name, const ColumnDefinition& column,
             std::size_t lengthSize)
{
    const std::vector<std::byte> text = EncodeTextOf(name, column, TextForm::Plain);
    WriteNumber(out.Room(lengthSize), 0, lengthSize, text.size());
    out.Put(text);
}

void PutHeader(ByteWriter& out, const TableDefinition& table, const TableDefinitionLayout& at)
{
    const MutableSpan bytes = out.Room(at.statistics + at.statisticsSize * table.indexes.size());
    WriteU16(bytes, 0, kDefinitionPage);
    WriteIfPresent(bytes, at.mark, kDefinitionMark);
    WriteU32(bytes, at.rowCount, table.rowCount);
    WriteU32(bytes, at.autoNumber, table.lastAutoNumber);
    WriteIfPresent(bytes, at.increment, kIncrement);
    WriteU8(bytes, at.tableKind, table.systemTable ? kSystemTableKind : kOrdinaryTableKind);
    WriteU16(bytes, at.columnCounter, table.columnCounter);
    WriteU16(bytes, at.variableCounter, table.variableColumnCounter);
    WriteU16(bytes, at.columns, static_cast<std::uint16_t>(table.columns.size()));
    WriteU32(bytes, at.namedIndexes, static_cast<std::uint32_t>(table.namedIndexes.size()));
    WriteU32(bytes, at.indexes, static_cast<std::uint32_t>(table.indexes.size()));
    WriteRowPointer(bytes, at.ownedPages, table.ownedPages);
    WriteRowPointer(bytes, at.freePages, table.freePages);
}

void PutColumn(ByteWriter& out, const ColumnDefinition& column, const ColumnLayout& at)
{
    const MutableSpan bytes = out.Room(at.size);
    WriteU8(bytes, at.type, static_cast<std::uint8_t>(column.type));
    WriteIfPresent(bytes, at.mark, kDefinitionMark);
    WriteU16(bytes, at.number, column.number);
    WriteU16(bytes, at.variableIndex, column.variableIndex);
    WriteU16(bytes, at.ordinal, column.ordinal);
    WriteIfPresent(bytes, at.country, column.country);
    WriteU16(bytes, at.language, column.sortOrder.language);
    WriteIfPresent(bytes, at.codePage, column.codePage);
    WriteIfPresent(bytes, at.sortVersion, column.sortOrder.version);
    if (column.type == ColumnType::Numeric) {
        WriteU8(bytes, at.precision, column.precision);
        WriteU8(bytes, at.precision + 1, column.scale);
    }
    WriteU8(bytes, at.flags, column.flags);
    WriteIfPresent(bytes, at.extraFlags, column.compressed ? kColumnCompressed : std::uint8_t{0});
    WriteU16(bytes, at.fixedOffset, column.fixed ? column.fixedOffset : std::uint16_t{0});
    WriteU16(bytes, at.length, column.length);
}

void PutIndex(ByteWriter& out, const IndexDefinition& index, const IndexLayout& at)
{
    const MutableSpan bytes = out.Room(at.size);
    WriteIfPresent(bytes, at.mark, kIndexMark);
    for (std::size_t i = 0; i < at.columnPlaces; ++i) {
        const bool used = i < index.columns.size();
        const std::size_t place = at.columns + at.columnSize * i;
        WriteU16(bytes, place, used ? index.columns[i].columnNumber : kNoColumn);
        WriteU8(bytes, place + 2, used && index.columns[i].ascending ? 1 : 0);
    }
    WriteRowPointer(bytes, at.usageMap, index.usageMap);
    WriteU32(bytes, at.root, Raw(index.root));
    WriteU8(bytes, at.flags, index.flags);
}

void PutNamedIndex(ByteWriter& out, const NamedIndex& index, const NamedIndexLayout& at)
{
    const MutableSpan bytes = out.Room(at.size);
    WriteIfPresent(bytes, at.mark, kDefinitionMark);
    WriteU32(bytes, at.number, index.number);
    WriteU32(bytes, at.tree, index.tree);
    WriteU8(bytes, at.relationKind, index.relationKind);
    WriteU32(bytes, at.relatedIndex, index.relatedIndex);
    WriteU32(bytes, at.relatedTable, Raw(index.relatedTable));
    WriteU8(bytes, at.cascadeUpdates, index.cascadeUpdates);
    WriteU8(bytes, at.cascadeDeletes, index.cascadeDeletes);
    WriteU8(bytes, at.kind, index.kind);
}

// Rule: those of system tables stand by name, whatever the order of the columns.
void PutLongValueMaps(ByteWriter& out, const TableDefinition& table)
{
    std::vector<ColumnDefinition> columns;
    for (const ColumnDefinition& column : table.columns)
        if (column.ownedPages) columns.push_back(column);
    if (table.systemTable) {
        std::sort(columns.begin(), columns.end(),
                  [](const auto& left, const auto& right) { return left.name < right.name; });
    }
    for (const ColumnDefinition& column : columns) {
        const MutableSpan bytes = out.Room(kLongValueMap.size);
        WriteU16(bytes, kLongValueMap.column, column.number);
        WriteRowPointer(bytes, kLongValueMap.owned, *column.ownedPages);
        WriteRowPointer(bytes, kLongValueMap.free, column.freePages.value_or(RowId{}));
    }
    out.U16(kEnd);
}

// Where the parts of varying length begin in a definition's joined bytes.
struct PartsOfDefinition {
    std::size_t statisticsEnd = 0, trees = 0, namedIndexes = 0, indexNames = 0;
};

// The place behind `count` names. Errors: 3343.
std::size_t BehindNames(Span joined, std::size_t at, std::size_t count, std::size_t lengthSize)
{
    for (; count > 0; --count) {
        const Span length = Slice(joined, at, lengthSize);
        at += lengthSize + ReadNumber(length, 0, lengthSize);
    }
    return at;
}

PartsOfDefinition PartsOf(Span joined, const DefinitionLayout& at)
{
    const std::size_t columns = ReadU16(joined, at.table.columns);
    const std::size_t trees = ReadU32(joined, at.table.indexes);
    PartsOfDefinition parts;
    parts.statisticsEnd = at.table.statistics + trees * at.table.statisticsSize;
    const std::size_t columnNames = parts.statisticsEnd + columns * at.column.size;
    parts.trees = BehindNames(joined, columnNames, columns, at.nameLength);
    parts.namedIndexes = parts.trees + trees * at.index.size;
    parts.indexNames =
        parts.namedIndexes + ReadU32(joined, at.table.namedIndexes) * at.namedIndex.size;
    RequireInside(joined.size(), 0, parts.indexNames);
    return parts;
}

void InsertPart(std::vector<std::byte>& joined, std::size_t at, std::vector<std::byte> part)
{
    RequireInside(joined.size(), 0, at);
    joined.insert(joined.begin() + static_cast<std::ptrdiff_t>(at), part.begin(), part.end());
    WriteU32(joined, kDefinitionLength, static_cast<std::uint32_t>(joined.size()));
}

void ErasePart(std::vector<std::byte>& joined, std::size_t at, std::size_t length)
{
    RequireInside(joined.size(), at, length);
    const auto from = joined.begin() + static_cast<std::ptrdiff_t>(at);
    joined.erase(from, from + static_cast<std::ptrdiff_t>(length));
    WriteU32(joined, kDefinitionLength, static_cast<std::uint32_t>(joined.size()));
}

void CountOneLess(std::vector<std::byte>& joined, std::size_t at)
{
    WriteU32(joined, at, ReadU32(joined, at) - 1);
}

void CountOneMore(std::vector<std::byte>& joined, std::size_t at)
{
    WriteU32(joined, at, ReadU32(joined, at) + 1);
}

}  // namespace

void AddTree(std::vector<std::byte>& joined, const IndexDefinition& tree,
             const FileVersion& version)
{
    const DefinitionLayout& at = *version.definition;
    const PartsOfDefinition parts = PartsOf(joined, at);
    ByteWriter out;
    PutIndex(out, tree, at.index);
    InsertPart(joined, parts.namedIndexes, out.Take());
    InsertPart(joined, parts.statisticsEnd, std::vector<std::byte>(at.table.statisticsSize));
    CountOneMore(joined, at.table.indexes);
}

void AddNamedIndex(std::vector<std::byte>& joined, const NamedIndex& index, std::size_t place,
                   const ColumnDefinition& anyColumn, const FileVersion& version)
{
    const DefinitionLayout& at = *version.definition;
    const PartsOfDefinition parts = PartsOf(joined, at);
    ByteWriter name, block;
    PutName(name, index.name, anyColumn, at.nameLength);
    PutNamedIndex(block, index, at.namedIndex);
    InsertPart(joined, BehindNames(joined, parts.indexNames, place, at.nameLength), name.Take());
    InsertPart(joined, parts.namedIndexes + place * at.namedIndex.size, block.Take());
    CountOneMore(joined, at.table.namedIndexes);
}

void RemoveTree(std::vector<std::byte>& joined, std::size_t tree, const FileVersion& version)
{
    const DefinitionLayout& at = *version.definition;
    const PartsOfDefinition parts = PartsOf(joined, at);
    for (std::size_t block = parts.namedIndexes; block < parts.indexNames;
         block += at.namedIndex.size) {
        const std::uint32_t number = ReadU32(joined, block + at.namedIndex.tree);
        if (number > tree) WriteU32(joined, block + at.namedIndex.tree, number - 1);
    }
    ErasePart(joined, parts.trees + tree * at.index.size, at.index.size);
    ErasePart(joined, at.table.statistics + tree * at.table.statisticsSize,
              at.table.statisticsSize);
    CountOneLess(joined, at.table.indexes);
}

void RemoveNamedIndex(std::vector<std::byte>& joined, std::size_t place, const FileVersion& version)
{
    const DefinitionLayout& at = *version.definition;
    const PartsOfDefinition parts = PartsOf(joined, at);
    const std::size_t name = BehindNames(joined, parts.indexNames, place, at.nameLength);
    ErasePart(joined, name, BehindNames(joined, name, 1, at.nameLength) - name);
    ErasePart(joined, parts.namedIndexes + place * at.namedIndex.size, at.namedIndex.size);
    CountOneLess(joined, at.table.namedIndexes);
}

TableDefinitionWriter::TableDefinitionWriter(std::vector<std::byte> joined,
                                             const FileVersion& version)
    : layout_(&version.definition->table), joined_(std::move(joined)), pageSize_(version.pageSize)
{
}

TableDefinitionWriter::TableDefinitionWriter(const TableDefinition& table,
                                             const FileVersion& version)
    : layout_(&version.definition->table), pageSize_(version.pageSize)
{
    const DefinitionLayout& at = *version.definition;
    const auto putName = [&](ByteWriter& out, std::string_view name) {
        PutName(out, name, table.columns.front(), at.nameLength);
    };
    ByteWriter out;
    PutHeader(out, table, at.table);
    for (const ColumnDefinition& column : table.columns)
        PutColumn(out, column, at.column);
    for (const ColumnDefinition& column : table.columns)
        putName(out, column.name);
    for (const IndexDefinition& index : table.indexes)
        PutIndex(out, index, at.index);
    for (const NamedIndex& index : table.namedIndexes)
        PutNamedIndex(out, index, at.namedIndex);
    for (const NamedIndex& index : table.namedIndexes)
        putName(out, index.name);
    PutLongValueMaps(out, table);
    WriteU32(out.Written(), kDefinitionLength, static_cast<std::uint32_t>(out.Size()));
    joined_ = out.Take();
}

std::size_t TableDefinitionWriter::PageCount() const
{
    const std::size_t content = pageSize_ - kDefinitionPageHeader;
    return (joined_.size() - kDefinitionPageHeader + content - 1) / content;
}

void TableDefinitionWriter::WritePage(std::size_t place, PageNumber next, MutableSpan page) const
{
    const std::size_t content = pageSize_ - kDefinitionPageHeader;
    const std::size_t from = kDefinitionPageHeader + place * content;
    const Span part = Span(joined_).subspan(from, std::min(content, joined_.size() - from));
    std::fill(page.begin(), page.end(), std::byte{0});
    WriteU16(page, 0, kDefinitionPage);
    WriteIfPresent(page, layout_->pageMark, kPageMark);
    WriteU32(page, kDefinitionNext, Raw(next));
    std::copy(part.begin(), part.end(),
              page.begin() + static_cast<std::ptrdiff_t>(kDefinitionPageHeader));
    // The last page tells its free bytes, less the header's once more.
    const std::size_t free = std::max(content - part.size(), kDefinitionPageHeader);
    WriteIfPresent(page, layout_->freeBytes,
                   static_cast<std::uint16_t>(free - kDefinitionPageHeader));
}

}  // namespace jet::format
