// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/TableWish.h"

namespace tools::shop {

TableWish& TableWish::Counter(std::string_view name)
{
    Field(name, Type::Long);
    table_.columns.back().autoNumber = true;
    return Primary({{std::string(name)}});
}

TableWish& TableWish::Field(std::string_view name, Type type, int size)
{
    jet::catalog::NewColumn column;
    column.name = name;
    column.type = type;
    column.size = size;
    table_.columns.push_back(std::move(column));
    return *this;
}

TableWish& TableWish::Fields(Type type, std::initializer_list<std::string_view> names)
{
    for (const std::string_view name : names)
        Field(name, type);
    return *this;
}

TableWish& TableWish::Text(std::string_view name, int size)
{
    Field(name, Type::Text, size);
    table_.columns.back().properties.allowZeroLength = true;
    return *this;
}

TableWish& TableWish::Required()
{
    table_.columns.back().properties.required = true;
    return *this;
}

TableWish& TableWish::Default(std::string_view expression)
{
    table_.columns.back().properties.defaultValue = expression;
    return *this;
}

TableWish& TableWish::Rule(std::string_view rule, std::string_view text)
{
    table_.columns.back().properties.rule.expression = rule;
    table_.columns.back().properties.rule.text = text;
    return *this;
}

TableWish& TableWish::Primary(Parts parts)
{
    Index("PrimaryKey", std::move(parts));
    table_.indexes.back().primary = true;
    return *this;
}

TableWish& TableWish::Index(std::string_view name, Parts parts)
{
    jet::catalog::NewIndex index;
    index.name = name;
    index.columns = std::move(parts);
    table_.indexes.push_back(std::move(index));
    return *this;
}

TableWish& TableWish::Unique(std::string_view name, Parts parts)
{
    Index(name, std::move(parts));
    table_.indexes.back().unique = true;
    table_.indexes.back().ignoreNulls = true;
    return *this;
}

}  // namespace tools::shop
