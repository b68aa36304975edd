// SPDX-License-Identifier: Apache-2.0
#include "jet/check/RowKey.h"

#include "base/NumberedError.h"
#include "jet/format/IndexKey.h"
#include "jet/format/ValueCodec.h"

namespace jet::check {

namespace {

base::Value ValueOf(const format::RowView& row, std::size_t column)
{
    const format::ColumnDefinition& definition = row.Table().columns[column];
    if (definition.type == format::ColumnType::Boolean) return row.Boolean(column);
    if (row.IsNull(column)) return base::Null{};
    return format::DecodeValue(row.Field(column), definition);
}

}  // namespace

KeyMaker::KeyMaker(const format::TableDefinition& table, const format::IndexDefinition& index)
    : table_(table)
{
    for (const format::IndexColumn& part : index.columns)
        parts_.push_back({table.FindNumber(part.columnNumber), part.ascending});
}

void KeyMaker::Make(const format::RowView& row, RowKey& key) const
{
    key.bytes.clear();
    key.known = key.anyNull = false;
    key.allNull = true;
    try {
        for (const Part& part : parts_)
            Add(row, part, key);
        key.known = true;
    } catch (const base::NumberedError&) {
        // The row's own check has found what is wrong with it.
    }
}

void KeyMaker::Add(const format::RowView& row, const Part& part, RowKey& key) const
{
    if (!part.column) throw base::NumberedError(3343);
    const format::ColumnDefinition& definition = table_.columns[*part.column];
    const bool null = row.IsNull(*part.column);
    key.anyNull = key.anyNull || null;
    key.allNull = key.allNull && null;
    if (format::IsLongValue(definition.type)) throw base::NumberedError(3251);
    format::AppendKeyColumn(key.bytes, ValueOf(row, *part.column), definition, part.ascending);
}

}  // namespace jet::check
