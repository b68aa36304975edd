// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/TableDesign.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/ConnectText.h"
#include "jet/dao/FieldTypes.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/sql/Parser.h"

#include <algorithm>

namespace dao {

using base::NumberedError;
using jet::catalog::NewColumn;
using jet::catalog::NewTable;
using jet::format::ColumnDefinition;
using jet::format::NamedIndex;

namespace {

FieldDef FieldDefOf(const ColumnDefinition& column, std::size_t bytesPerCharacter)
{
    FieldDef field;
    field.name = column.name;
    field.type = FieldTypeOf(column.type);
    field.size = FieldSizeOf(column, bytesPerCharacter);
    if (field.type == FieldType::Decimal) {
        field.precision = column.precision;
        field.scale = column.scale;
    }
    field.attributes = (column.fixed ? kFixedField : kVariableField) |
                       (column.autoNumber || column.autoGuid ? kAutoIncrField : 0);
    return field;
}

IndexDef IndexDefOf(const NamedIndex& named, const jet::format::TableDefinition& table)
{
    const jet::format::IndexDefinition& tree = table.indexes.at(named.tree);
    IndexDef index;
    index.name = named.name;
    index.primary = named.kind == 1;
    index.unique = tree.unique;
    index.ignoreNulls = tree.ignoreNulls;
    index.required = tree.required;
    for (const jet::format::IndexColumn& part : tree.columns) {
        const auto column = std::find_if(
            table.columns.begin(), table.columns.end(),
            [&](const ColumnDefinition& known) { return known.number == part.columnNumber; });
        if (column != table.columns.end()) index.fields.push_back({column->name, part.ascending});
    }
    return index;
}

// Errors: 3320 when it cannot be read as an expression.
jet::catalog::ValidationRule RuleOf(const std::string& rule, const std::string& text,
                                    std::string_view field)
{
    if (!rule.empty()) (void)jet::sql::ParseRule(rule, field, {});
    return {rule, text};
}

NewColumn NewColumnOf(const FieldDef& field)
{
    const auto type = ColumnTypeOf(field.type);
    if (!type) throw NumberedError(3259);
    NewColumn column;
    column.name = field.name;
    column.type = *type;
    column.size = field.size;
    column.precision = field.precision;
    column.scale = field.scale;
    if (field.type == FieldType::Text && field.size == 0) column.size = kLongestText;
    if (field.type == FieldType::Text && field.size > kLongestText) throw NumberedError(3017);
    column.autoNumber = (field.attributes & kAutoIncrField) != 0;
    if (column.autoNumber && field.type != FieldType::Long && field.type != FieldType::Guid)
        throw NumberedError(3001);
    if (!field.defaultValue.empty()) (void)jet::sql::ParseDefault(field.defaultValue, {});
    column.properties.defaultValue = field.defaultValue;
    column.properties.allowZeroLength = field.allowZeroLength;
    column.properties.required = field.required;
    column.properties.rule = RuleOf(field.validationRule, field.validationText, field.name);
    return column;
}

constexpr std::string_view kDatabasePart = "DATABASE";

}  // namespace

std::string ConnectOf(const jet::catalog::NewLink& link)
{
    return jet::catalog::WithoutPart(link.connect, kDatabasePart) + ";" +
           std::string(kDatabasePart) + "=" + link.database;
}

TableDef TableDefOf(const jet::catalog::OpenTable& table)
{
    TableDef made(table.entry.name);
    const jet::format::TableDefinition& definition = table.rows->Definition();
    for (std::size_t i = 0; i < definition.columns.size(); ++i) {
        FieldDef field = FieldDefOf(definition.columns[i], table.bytesPerCharacter);
        if (i < table.properties.size()) {
            field.defaultValue = table.properties[i].defaultValue;
            field.allowZeroLength = table.properties[i].allowZeroLength;
            field.required = table.properties[i].required;
            field.validationRule = table.properties[i].rule.expression;
            field.validationText = table.properties[i].rule.text;
        }
        made.Append(std::move(field));
    }
    for (const NamedIndex& named : definition.namedIndexes)
        if (named.kind != jet::format::kRelationship && named.tree < definition.indexes.size())
            made.Append(IndexDefOf(named, definition));
    made.SetValidation(table.rule.expression, table.rule.text);
    return made;
}

NewTable NewTableOf(const TableDef& table)
{
    NewTable made;
    made.name = table.Name();
    made.rule = RuleOf(table.ValidationRule(), table.ValidationText(), {});
    for (const FieldDef& field : table.Fields())
        made.columns.push_back(NewColumnOf(field));
    const auto counters = std::count_if(made.columns.begin(), made.columns.end(),
                                        [](const NewColumn& column) { return column.autoNumber; });
    if (counters > 1) throw NumberedError(3090);
    for (const IndexDef& index : table.Indexes()) {
        jet::catalog::NewIndex copy;
        copy.name = index.name;
        for (const IndexDef::Part& part : index.fields)
            copy.columns.push_back({part.field, part.ascending});
        copy.primary = index.primary;
        copy.unique = index.unique;
        copy.ignoreNulls = index.ignoreNulls;
        copy.required = index.required;
        made.indexes.push_back(std::move(copy));
    }
    return made;
}

RelationDef RelationDefOf(const jet::catalog::NewRelationship& relationship)
{
    RelationDef made;
    made.name = relationship.name;
    made.table = relationship.referenced;
    made.foreignTable = relationship.referencing;
    made.attributes = static_cast<int>(relationship.flags);
    for (const auto& pair : relationship.columns)
        made.fields.push_back({pair.referenced, pair.referencing});
    return made;
}

jet::catalog::NewRelationship NewRelationshipOf(const RelationDef& relation)
{
    jet::catalog::NewRelationship made;
    made.name = relation.name;
    made.referenced = relation.table;
    made.referencing = relation.foreignTable;
    made.flags = static_cast<std::uint32_t>(relation.attributes);
    for (const RelationDef::Pair& pair : relation.fields)
        made.columns.push_back({pair.field, pair.foreignField});
    return made;
}

jet::catalog::NewLink NewLinkOf(const TableDef& table)
{
    jet::catalog::NewLink link;
    link.name = table.Name();
    link.database = jet::catalog::PartOf(table.Connect(), kDatabasePart);
    link.connect = jet::catalog::WithoutPart(table.Connect(), kDatabasePart);
    if (link.database.empty()) throw NumberedError(3170);
    link.table = table.SourceTableName();
    return link;
}

}  // namespace dao
