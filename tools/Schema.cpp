// SPDX-License-Identifier: Apache-2.0
#include "tools/Schema.h"

#include "jet/format/TableDefinitionLayout.h"
#include "tools/RowJson.h"

#include <algorithm>

namespace tools {

namespace {

using jet::catalog::FieldProperties;
using jet::catalog::OpenTable;
using jet::format::ColumnDefinition;
using jet::format::ColumnType;
using jet::format::IndexDefinition;
using jet::format::NamedIndex;
using jet::format::TableDefinition;

// How a type is called: for people, for programs.
struct TypeName {
    const char* text;
    const char* json;
};

TypeName NameOf(ColumnType type)
{
    switch (type) {
    case ColumnType::Boolean:
        return {"Yes/No", "BOOLEAN"};
    case ColumnType::Byte:
        return {"Byte", "BYTE"};
    case ColumnType::Integer:
        return {"Integer", "INT"};
    case ColumnType::Long:
        return {"Long", "LONG"};
    case ColumnType::Currency:
        return {"Currency", "MONEY"};
    case ColumnType::Single:
        return {"Single", "FLOAT"};
    case ColumnType::Double:
        return {"Double", "DOUBLE"};
    case ColumnType::Date:
        return {"Date/Time", "SHORT_DATE_TIME"};
    case ColumnType::Binary:
        return {"Binary", "BINARY"};
    case ColumnType::Text:
        return {"Text", "TEXT"};
    case ColumnType::Ole:
        return {"OLE", "OLE"};
    case ColumnType::Memo:
        return {"Memo", "MEMO"};
    case ColumnType::Guid:
        return {"GUID", "GUID"};
    case ColumnType::Numeric:
        return {"Decimal", "NUMERIC"};
    }
    return {"?", "UNKNOWN"};
}

// Units: characters of text in Jet 4, where each takes two bytes; otherwise bytes.
int LengthOf(const ColumnDefinition& column, std::size_t bytesPerCharacter)
{
    if (column.type != ColumnType::Text) return column.length;
    return static_cast<int>(column.length / bytesPerCharacter);
}

std::string TypeText(const ColumnDefinition& column, std::size_t bytesPerCharacter)
{
    std::string text = NameOf(column.type).text;
    if (column.type == ColumnType::Text || column.type == ColumnType::Binary)
        text += "(" + std::to_string(LengthOf(column, bytesPerCharacter)) + ")";
    if (column.type == ColumnType::Numeric)
        text += "(" + std::to_string(column.precision) + "," + std::to_string(column.scale) + ")";
    return text;
}

std::string AttributesText(const ColumnDefinition& column, const FieldProperties& properties)
{
    std::string text;
    if (column.autoNumber || column.autoGuid) text += ", counter";
    if (properties.required) text += ", required";
    if (properties.allowZeroLength) text += ", zero length allowed";
    if (column.compressed) text += ", compressed";
    if (!properties.defaultValue.empty()) text += ", default " + properties.defaultValue;
    if (!properties.rule.expression.empty()) text += ", rule " + properties.rule.expression;
    if (!properties.rule.text.empty()) text += ", rule text " + properties.rule.text;
    return text.empty() ? text : text.substr(1);
}

std::string ColumnNameOf(const TableDefinition& table, std::uint16_t number)
{
    const auto column =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [&](const ColumnDefinition& known) { return known.number == number; });
    return column == table.columns.end() ? "?" : column->name;
}

std::string IndexText(const TableDefinition& table, const NamedIndex& index)
{
    const IndexDefinition& tree = table.indexes.at(index.tree);
    std::string text = "  index " + index.name + ":";
    for (const auto& column : tree.columns)
        text += " " + ColumnNameOf(table, column.columnNumber) + (column.ascending ? "" : " down");
    if (index.kind == jet::format::kPrimaryKey) text += ", primary key";
    if (index.kind == 2) text += ", relationship";
    if (tree.unique) text += ", unique";
    if (tree.required) text += ", required";
    if (tree.ignoreNulls) text += ", without nulls";
    return text + "\n";
}

std::string IndexJson(const TableDefinition& table, const NamedIndex& index)
{
    const IndexDefinition& tree = table.indexes.at(index.tree);
    std::string columns;
    for (const auto& column : tree.columns) {
        if (!columns.empty()) columns += ",";
        columns +=
            JsonText((column.ascending ? "+" : "-") + ColumnNameOf(table, column.columnNumber));
    }
    return "{\"name\":" + JsonText(index.name) +
           ",\"primary\":" + (index.kind == jet::format::kPrimaryKey ? "true" : "false") +
           ",\"unique\":" + (tree.unique ? "true" : "false") + ",\"columns\":[" + columns + "]}";
}

std::string ColumnJson(const ColumnDefinition& column, std::size_t bytesPerCharacter)
{
    return "{\"name\":" + JsonText(column.name) + ",\"type\":\"" + NameOf(column.type).json +
           "\",\"length\":" + std::to_string(LengthOf(column, bytesPerCharacter)) +
           ",\"autoNumber\":" + (column.autoNumber || column.autoGuid ? "true" : "false") + "}";
}

}  // namespace

std::string SchemaText(const OpenTable& table, std::size_t bytesPerCharacter)
{
    const TableDefinition& definition = table.rows->Definition();
    std::string text = "table " + table.entry.name + " (" + std::to_string(table.rows->RowCount()) +
                       " rows, page " + std::to_string(Raw(definition.page)) + ")\n";
    std::size_t width = 0;
    for (const ColumnDefinition& column : definition.columns)
        width = std::max(width, column.name.size());
    for (std::size_t i = 0; i < definition.columns.size(); ++i) {
        const ColumnDefinition& column = definition.columns[i];
        const std::string type = TypeText(column, bytesPerCharacter);
        const std::string attributes = AttributesText(column, table.properties.at(i));
        text += "  " + column.name + std::string(width + 2 - column.name.size(), ' ') + type;
        if (!attributes.empty()) text += "," + attributes;
        text += "\n";
    }
    for (const NamedIndex& index : definition.namedIndexes)
        text += IndexText(definition, index);
    return text;
}

std::string SchemaJson(const OpenTable& table, std::size_t bytesPerCharacter)
{
    const TableDefinition& definition = table.rows->Definition();
    std::string columns, indexes;
    for (const ColumnDefinition& column : definition.columns)
        columns += (columns.empty() ? "" : ",") + ColumnJson(column, bytesPerCharacter);
    for (const NamedIndex& index : definition.namedIndexes)
        indexes += (indexes.empty() ? "" : ",") + IndexJson(definition, index);
    return "{\"table\":" + JsonText(table.entry.name) +
           ",\"rows\":" + std::to_string(table.rows->RowCount()) + ",\"columns\":[" + columns +
           "],\"indexes\":[" + indexes + "]}";
}

}  // namespace tools
