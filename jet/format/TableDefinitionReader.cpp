// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TableDefinitionReader.h"

#include "base/NumberedError.h"
#include "jet/format/CodePage.h"
#include "jet/format/Collation97.h"
#include "jet/format/RowPointer.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/ValueCodec.h"

#include <algorithm>
#include <string>
#include <utility>

namespace jet::format {

namespace {

[[noreturn]] void Damaged(const char* what)
{
    throw base::NumberedError(3343).At(std::string("table definition: ") + what);
}

// Takes parts of known length off the joined bytes, one behind the other.
class Sections {
public:
    Sections(Span joined, std::size_t at) : joined_(joined), at_(at) {}

    Span Next(std::size_t length)
    {
        const Span part = Slice(joined_, at_, length);
        at_ += length;
        return part;
    }

    // A name in the text form of `column`.
    std::string NextName(std::size_t lengthSize, const ColumnDefinition& column)
    {
        const std::size_t length = ReadNumber(Next(lengthSize), 0, lengthSize);
        return DecodeTextOf(Next(length), column);
    }

private:
    Span joined_;
    std::size_t at_;
};

// Rule: a decimal has its scale where other columns have their code page.
std::uint16_t CodePageOf(Span bytes, ColumnType type, const ColumnLayout& at, std::uint16_t ofFile)
{
    if (at.codePage == kAbsent) return kUtf16;
    const std::uint16_t stored = ReadU16(bytes, at.codePage);
    return type == ColumnType::Numeric || stored == kUtf16 ? ofFile : stored;
}

ColumnDefinition ReadColumn(Span bytes, const ColumnLayout& at, std::uint16_t codePage)
{
    ColumnDefinition column;
    column.type = static_cast<ColumnType>(ReadU8(bytes, at.type));
    column.number = ReadU16(bytes, at.number);
    column.variableIndex = ReadU16(bytes, at.variableIndex);
    column.ordinal = ReadU16(bytes, at.ordinal);
    column.country = ReadU16Or(bytes, at.country, 0);
    column.codePage = CodePageOf(bytes, column.type, at, codePage);
    if (column.type == ColumnType::Numeric) {
        column.precision = ReadU8(bytes, at.precision);
        column.scale = ReadU8(bytes, at.precision + 1);
    } else {
        column.sortOrder = {ReadU16(bytes, at.language),
                            ReadU8Or(bytes, at.sortVersion, kJet3Tables)};
    }
    column.flags = ReadU8(bytes, at.flags);
    column.fixed = (column.flags & kColumnFixed) != 0;
    column.autoNumber = column.type == ColumnType::Long && (column.flags & kColumnAutoNumber) != 0;
    column.autoGuid = column.type == ColumnType::Guid && (column.flags & kColumnAutoGuid) != 0;
    column.compressed = (ReadU8Or(bytes, at.extraFlags, 0) & kColumnCompressed) != 0;
    column.fixedOffset = ReadU16(bytes, at.fixedOffset);
    column.length = ReadU16(bytes, at.length);
    return column;
}

// A place no row could have would lead every reader of rows astray.
void CheckColumn(const ColumnDefinition& column, const TableDefinition& table,
                 const FileVersion& version)
{
    if (column.number >= table.columnCounter) Damaged("column number beyond the counter");
    if (!column.fixed && column.variableIndex >= table.variableColumnCounter)
        Damaged("variable column beyond the counter");
    if (column.fixed && column.type != ColumnType::Boolean &&
        column.fixedOffset + std::size_t{column.length} > version.pageSize)
        Damaged("fixed column beyond the page");
}

// What a row counts with. Rule: the counters never decrease, so they are not those of the columns.
void CheckCounters(const TableDefinition& table)
{
    const std::size_t bits = 8 * table.row.number;
    if (table.columnCounter >> bits != 0 || table.variableColumnCounter >> bits != 0)
        Damaged("more columns than a row can count");
}

// Where a column's values lie, among the fixed columns or among the variable ones.
struct Place {
    std::size_t from, to;
};

void RequireApart(std::vector<Place> places)
{
    std::sort(places.begin(), places.end(),
              [](const Place& left, const Place& right) { return left.from < right.from; });
    for (std::size_t i = 1; i < places.size(); ++i)
        if (places[i].from < places[i - 1].to) Damaged("two columns in one place");
}

// Two columns in one place would each overwrite the other's value.
void CheckPlaces(const TableDefinition& table)
{
    std::vector<Place> fixed, variable;
    for (const ColumnDefinition& column : table.columns) {
        const std::size_t offset = column.fixedOffset;
        if (!column.fixed)
            variable.push_back({column.variableIndex, std::size_t{column.variableIndex} + 1});
        else if (column.type != ColumnType::Boolean && column.length > 0)
            fixed.push_back({offset, offset + column.length});
    }
    RequireApart(std::move(fixed));
    RequireApart(std::move(variable));
}

IndexDefinition ReadIndex(Span bytes, const IndexLayout& at)
{
    IndexDefinition index;
    for (std::size_t i = 0; i < at.columnPlaces; ++i) {
        const Span place = bytes.subspan(at.columns + i * at.columnSize, at.columnSize);
        const std::uint16_t number = ReadU16(place, 0);
        if (number == kNoColumn) break;
        index.columns.push_back({number, ReadU8(place, 2) == 1});
    }
    index.usageMap = ReadRowPointer(bytes, at.usageMap);
    index.root = PageNumber{ReadU32(bytes, at.root)};
    index.flags = ReadU8(bytes, at.flags);
    index.unique = (index.flags & kIndexUnique) != 0;
    index.ignoreNulls = (index.flags & kIndexIgnoreNulls) != 0;
    index.required = (index.flags & kIndexRequired) != 0;
    return index;
}

NamedIndex ReadNamedIndex(Span bytes, const NamedIndexLayout& at)
{
    NamedIndex index;
    index.number = ReadU32(bytes, at.number);
    index.tree = ReadU32(bytes, at.tree);
    index.relationKind = ReadU8(bytes, at.relationKind);
    index.relatedIndex = ReadU32(bytes, at.relatedIndex);
    index.relatedTable = PageNumber{ReadU32(bytes, at.relatedTable)};
    index.cascadeUpdates = ReadU8(bytes, at.cascadeUpdates);
    index.cascadeDeletes = ReadU8(bytes, at.cascadeDeletes);
    index.kind = ReadU8(bytes, at.kind);
    return index;
}

void ReadColumns(TableDefinition& table, Sections& sections, std::size_t count,
                 const FileVersion& version, std::uint16_t codePage)
{
    const DefinitionLayout& at = *version.definition;
    for (std::size_t i = 0; i < count; ++i) {
        table.columns.push_back(ReadColumn(sections.Next(at.column.size), at.column, codePage));
        CheckColumn(table.columns.back(), table, version);
    }
    CheckPlaces(table);
    for (ColumnDefinition& column : table.columns)
        column.name = sections.NextName(at.nameLength, table.columns.front());
}

void ReadIndexes(TableDefinition& table, Sections& sections, std::size_t trees, std::size_t named,
                 const DefinitionLayout& at)
{
    for (std::size_t i = 0; i < trees; ++i) {
        table.indexes.push_back(ReadIndex(sections.Next(at.index.size), at.index));
        table.indexes.back().statisticsOffset =
            static_cast<std::uint32_t>(at.table.statistics + i * at.table.statisticsSize);
    }
    for (std::size_t i = 0; i < named; ++i) {
        table.namedIndexes.push_back(
            ReadNamedIndex(sections.Next(at.namedIndex.size), at.namedIndex));
        const NamedIndex& index = table.namedIndexes.back();
        if (index.tree >= trees) Damaged("named index without tree");
        if (index.kind != kPrimaryKey) continue;
        table.indexes[index.tree].unique = true;
        // The keys of the engine's own tables may hold nulls unless their flags forbid it.
        if (!table.systemTable) table.indexes[index.tree].required = true;
    }
    if (table.columns.empty() && named > 0) Damaged("indexes without columns");
    for (NamedIndex& index : table.namedIndexes)
        index.name = sections.NextName(at.nameLength, table.columns.front());
}

void ReadLongValueMaps(TableDefinition& table, Sections& sections)
{
    constexpr const LongValueMapLayout& at = kLongValueMap;
    while (true) {
        const std::uint16_t number = ReadU16(sections.Next(2), 0);
        if (number == kNoColumn) return;
        const Span maps = sections.Next(at.size - at.owned);
        const std::optional<std::size_t> place = table.FindNumber(number);
        if (!place) Damaged("long-value maps without column");
        table.columns[*place].ownedPages = ReadRowPointer(maps, 0);
        const RowId free = ReadRowPointer(maps, at.free - at.owned);
        // An internal column keeps one value a page and no map of pages with room.
        if (free.page != PageNumber::None) table.columns[*place].freePages = free;
    }
}

void SortColumns(TableDefinition& table)
{
    // The engine's own tables have ordinal 0 throughout; there the column number decides.
    std::sort(table.columns.begin(), table.columns.end(), [](const auto& left, const auto& right) {
        if (left.ordinal != right.ordinal) return left.ordinal < right.ordinal;
        return left.number < right.number;
    });
    std::vector<std::uint16_t> numbers;
    for (const ColumnDefinition& column : table.columns)
        numbers.push_back(column.number);
    std::sort(numbers.begin(), numbers.end());
    if (std::adjacent_find(numbers.begin(), numbers.end()) != numbers.end())
        Damaged("two columns of one number");
}

// Which rows are older than the first variable column ever made. Where that one is not there any
// more, those whose every column had no variable one before it; fixed columns tell that too.
std::uint16_t ColumnsBeforeVariable(const TableDefinition& table)
{
    std::uint16_t before = 0;
    std::uint16_t first = table.columnCounter;  // the first variable column that is there
    for (const ColumnDefinition& column : table.columns) {
        if (!column.fixed && column.variableIndex == 0) return column.number;
        if (!column.fixed) first = std::min(first, column.number);
    }
    for (const ColumnDefinition& column : table.columns)
        if (column.fixed && column.variableIndex == 0 && column.number < first)
            before = std::max(before, static_cast<std::uint16_t>(column.number + 1));
    return before;
}

}  // namespace

DefinitionPage::DefinitionPage(Span page) : page_(page)
{
    if (ReadU16(page, 0) != kDefinitionPage) Damaged("page of another kind");
}

PageNumber DefinitionPage::Next() const
{
    return PageNumber{ReadU32(page_, kDefinitionNext)};
}

std::uint32_t DefinitionPage::Length() const
{
    return ReadU32(page_, kDefinitionLength);
}

Span DefinitionPage::Content() const
{
    return page_.subspan(kDefinitionPageHeader);
}

TableDefinition ReadTableDefinition(Span joined, const FileVersion& version, std::uint16_t codePage)
{
    const Span bytes = Slice(joined, 0, DefinitionPage(joined).Length());
    const TableDefinitionLayout& at = version.definition->table;
    TableDefinition table;
    table.row = *version.row;
    table.rowCount = ReadU32(bytes, at.rowCount);
    table.lastAutoNumber = ReadU32(bytes, at.autoNumber);
    table.systemTable = ReadU8(bytes, at.tableKind) == kSystemTableKind;
    table.columnCounter = ReadU16(bytes, at.columnCounter);
    table.variableColumnCounter = ReadU16(bytes, at.variableCounter);
    CheckCounters(table);
    table.ownedPages = ReadRowPointer(bytes, at.ownedPages);
    table.freePages = ReadRowPointer(bytes, at.freePages);
    const std::size_t trees = ReadU32(bytes, at.indexes);
    if (trees > bytes.size()) Damaged("more indexes than bytes");
    Sections sections(bytes, at.statistics + trees * at.statisticsSize);
    ReadColumns(table, sections, ReadU16(bytes, at.columns), version, codePage);
    ReadIndexes(table, sections, trees, ReadU32(bytes, at.namedIndexes), *version.definition);
    ReadLongValueMaps(table, sections);
    SortColumns(table);
    table.columnsBeforeVariable = ColumnsBeforeVariable(table);
    return table;
}

}  // namespace jet::format
