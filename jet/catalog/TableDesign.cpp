// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/TableDesign.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/PropertyBlock.h"
#include "jet/format/TableDefinitionLayout.h"

#include <algorithm>

namespace jet::catalog {

namespace {

using base::NumberedError;
using format::ColumnDefinition;
using format::ColumnType;
using format::FileVersion;
using format::IndexDefinition;
using format::NamedIndex;
using format::TableDefinition;

constexpr std::size_t kLongestName = 64;  // UTF-16 units
constexpr int kMostDigits = 28;           // of a decimal
constexpr std::size_t kMostColumns = 255, kMostIndexColumns = 10;

// Flags that every column carries.
constexpr std::uint8_t kColumnAlways = 0x02;

// The stored length in bytes. Errors: 3017, 3259, 3271.
std::uint16_t LengthOf(const NewColumn& column, const FileVersion& version)
{
    if (static_cast<std::uint8_t>(column.type) > version.lastColumnType) throw NumberedError(3259);
    if (column.type == ColumnType::Numeric &&
        (column.precision < 1 || column.precision > kMostDigits || column.scale > column.precision))
        throw NumberedError(3271);
    const auto sized = [&](int longest, std::size_t unit) {
        const int size = column.size == 0 ? longest : column.size;
        if (size < 1 || size > longest) throw NumberedError(3017);
        return static_cast<std::uint16_t>(static_cast<std::size_t>(size) * unit);
    };
    if (const auto length = format::LengthOf(column.type)) return *length;
    switch (column.type) {
    case ColumnType::Binary:
        return sized(version.longestBinary, 1);
    case ColumnType::Text:
        return sized(format::kLongestText, version.bytesPerCharacter);
    case ColumnType::Ole:
    case ColumnType::Memo:
        return 0;
    default:
        throw NumberedError(3259);
    }
}

ColumnDefinition ColumnOf(const NewColumn& wish, const DatabaseText& text,
                          const FileVersion& version)
{
    RequireGoodName(wish.name);
    ColumnDefinition column;
    column.name = wish.name;
    column.type = wish.type;
    column.length = LengthOf(wish, version);
    column.fixed = format::LengthOf(wish.type).has_value();
    column.autoNumber = wish.autoNumber && wish.type == ColumnType::Long;
    column.autoGuid = wish.autoNumber && wish.type == ColumnType::Guid;
    if (wish.autoNumber && !column.autoNumber && !column.autoGuid) throw NumberedError(3259);
    column.flags = kColumnAlways;
    if (column.fixed) column.flags |= format::kColumnFixed;
    if (column.autoNumber) column.flags |= format::kColumnAutoNumber;
    if (column.autoGuid) column.flags |= format::kColumnAutoGuid;
    column.precision = wish.precision;
    column.scale = wish.scale;
    column.sortOrder = text.order;
    column.codePage = text.codePage;
    column.country = text.country;
    return column;
}

// Numbers and offsets are running sums in creation order; booleans live in the null mask alone.
void AddColumn(TableDefinition& table, ColumnDefinition column, std::uint16_t& fixedEnd)
{
    if (table.FindColumn(column.name)) throw NumberedError(3191);
    column.number = column.ordinal = table.columnCounter++;
    column.variableIndex = table.variableColumnCounter;
    if (!column.fixed) {
        ++table.variableColumnCounter;
    } else if (column.type != ColumnType::Boolean) {
        column.fixedOffset = fixedEnd;
        fixedEnd = static_cast<std::uint16_t>(fixedEnd + column.length);
    }
    table.columns.push_back(std::move(column));
}

IndexDefinition TreeOf(const NewIndex& wish, const TableDefinition& table, std::uint8_t flags)
{
    if (wish.columns.empty()) throw NumberedError(3018);
    if (wish.columns.size() > kMostIndexColumns) throw NumberedError(3001);
    IndexDefinition tree;
    for (const NewIndex::Part& part : wish.columns) {
        const auto column = table.FindColumn(part.column);
        if (!column) throw NumberedError(3018);
        tree.columns.push_back({table.columns[*column].number, part.ascending});
    }
    tree.unique = wish.unique || wish.primary;
    tree.required = wish.required || wish.primary;
    tree.ignoreNulls = wish.ignoreNulls && !tree.required;
    tree.flags = flags;
    if (tree.unique) tree.flags |= format::kIndexUnique;
    if (tree.ignoreNulls) tree.flags |= format::kIndexIgnoreNulls;
    if (tree.required) tree.flags |= format::kIndexRequired;
    return tree;
}

// Indexes that agree in everything but their name share one tree.
void AddIndex(TableDefinition& table, const NewIndex& wish, const FileVersion& version)
{
    RequireGoodName(wish.name);
    for (const NamedIndex& known : table.namedIndexes) {
        if (base::SameName(known.name, wish.name)) throw NumberedError(3284);
        if (wish.primary && known.kind == format::kPrimaryKey) throw NumberedError(3283);
    }
    const IndexDefinition tree = TreeOf(wish, table, version.indexAlways);
    const auto shared = std::find_if(table.indexes.begin(), table.indexes.end(),
                                     [&](const auto& known) { return SameTree(known, tree); });
    NamedIndex index;
    index.name = wish.name;
    index.number = static_cast<std::uint32_t>(table.namedIndexes.size());
    index.tree = static_cast<std::uint32_t>(shared - table.indexes.begin());
    index.kind = wish.primary ? format::kPrimaryKey : 0;
    // What is no relationship carries these rule bytes, not zeros.
    index.cascadeUpdates = index.cascadeDeletes = 4;
    if (shared == table.indexes.end()) table.indexes.push_back(tree);
    table.namedIndexes.push_back(std::move(index));
}

}  // namespace

bool SameTree(const IndexDefinition& left, const IndexDefinition& right)
{
    const auto same = [](const format::IndexColumn& a, const format::IndexColumn& b) {
        return a.columnNumber == b.columnNumber && a.ascending == b.ascending;
    };
    return left.flags == right.flags &&
           std::equal(left.columns.begin(), left.columns.end(), right.columns.begin(),
                      right.columns.end(), same);
}

void RequireGoodName(std::string_view name)
{
    const std::size_t length = base::Length(name);
    const auto isBad = [](char c) {
        return static_cast<unsigned char>(c) < ' ' ||
               std::string_view(".!`[]").find(c) != std::string_view::npos;
    };
    if (length == 0 || length > kLongestName || name.front() == ' ' ||
        std::any_of(name.begin(), name.end(), isBad))
        throw NumberedError(3125, {std::string(name)});
}

DatabaseText NewDatabaseText(const FileVersion& version)
{
    return {.order = {.version = version.sortVersion},
            .codePage = version.codePage,
            .country = version.country};
}

format::TableDefinition DesignOf(const NewTable& wish, const DatabaseText& text,
                                 const FileVersion& version)
{
    RequireGoodName(wish.name);
    if (wish.columns.empty()) throw NumberedError(3264);
    if (wish.columns.size() > kMostColumns) throw NumberedError(3190);
    if (wish.indexes.size() > kMostIndexes) throw NumberedError(3001);
    TableDefinition table;
    table.row = *version.row;
    std::uint16_t fixedEnd = 0;
    for (const NewColumn& column : wish.columns)
        AddColumn(table, ColumnOf(column, text, version), fixedEnd);
    for (const NewIndex& index : wish.indexes)
        AddIndex(table, index, version);
    std::stable_sort(table.namedIndexes.begin(), table.namedIndexes.end(),
                     [&](const NamedIndex& left, const NamedIndex& right) {
                         return format::CompareText(left.name, right.name, text.order) < 0;
                     });
    return table;
}

std::vector<std::byte> PropertiesOf(const NewTable& table, std::uint16_t codePage)
{
    format::PropertyBlock block(codePage);
    AddRule(block, {}, table.rule);
    for (const NewColumn& column : table.columns) {
        if (!column.autoNumber)
            AddProperties(block, column.name, column.properties);
        else if (column.type == ColumnType::Guid)
            AddGuidCounter(block, column.name);
        else if (base::SameName(column.properties.defaultValue, kRandomCounter))
            AddRandomCounter(block, column.name);
    }
    return block.Empty() ? std::vector<std::byte>{} : block.Encode();
}

}  // namespace jet::catalog
