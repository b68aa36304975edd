// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/TableDef.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/dao/FieldTypes.h"

#include <algorithm>

namespace dao {

FieldDef TableDef::CreateField(std::string_view name, FieldType type, int size)
{
    FieldDef field;
    field.name = name;
    field.type = type;
    field.size = size;
    return field;
}

void TableDef::Append(FieldDef field)
{
    const auto same = [&](const FieldDef& other) { return base::SameName(other.name, field.name); };
    if (std::any_of(fields_.begin(), fields_.end(), same)) throw base::NumberedError(3191);
    if (!ColumnTypeOf(field.type)) throw base::NumberedError(3259);
    fields_.push_back(std::move(field));
}

void TableDef::Append(IndexDef index)
{
    const auto same = [&](const IndexDef& other) { return base::SameName(other.name, index.name); };
    if (std::any_of(indexes_.begin(), indexes_.end(), same)) throw base::NumberedError(3284);
    indexes_.push_back(std::move(index));
}

void TableDef::SetLink(std::string_view name, std::string_view connect,
                       std::string_view sourceTable)
{
    name_ = name;
    connect_ = connect;
    sourceTable_ = sourceTable;
}

void TableDef::SetValidation(std::string_view rule, std::string_view text)
{
    validationRule_ = rule;
    validationText_ = text;
}

}  // namespace dao
