// SPDX-License-Identifier: Apache-2.0
#include "jet/table/RowBuilder.h"

#include "base/NumberedError.h"
#include "jet/format/LongValueHeader.h"
#include "jet/format/ValueCodec.h"
#include "jet/table/LongValues.h"

#include <algorithm>

namespace jet::table {

namespace {

using format::ColumnDefinition;
using format::ColumnType;
using format::TextForm;

template <class T>
const T& ContentOf(const base::Value& value)
{
    const T* content = value.As<T>();
    if (content == nullptr) throw base::NumberedError(3421);
    return *content;
}

// What a value takes outside its row; there no text is compressed.
std::vector<std::byte> PlainBytes(const base::Value& value, const ColumnDefinition& column)
{
    if (column.type == ColumnType::Ole) return ContentOf<base::Bytes>(value);
    return format::EncodeTextOf(ContentOf<std::string>(value), column, TextForm::Plain);
}

}  // namespace

RowBuilder::RowBuilder(const format::TableDefinition& table, std::span<const Assignment> values,
                       const format::FileVersion& version)
    : table_(&table), version_(&version), writer_(table)
{
    Assign(values);
    Shorten();
}

RowBuilder::RowBuilder(const format::RowView& row, std::span<const Assignment> values,
                       const format::FileVersion& version)
    : table_(&row.Table()), version_(&version), writer_(row)
{
    Assign(values);
    Shorten();
}

void RowBuilder::Assign(std::span<const Assignment> values)
{
    for (const Assignment& assignment : values) {
        const ColumnDefinition& column = table_->columns.at(assignment.column);
        const base::Value& value = assignment.value;
        if (column.type == ColumnType::Boolean) {
            writer_.SetBoolean(assignment.column, !value.IsNull() && ContentOf<bool>(value));
        } else if (format::IsLongValue(column.type)) {
            AssignLongValue(assignment.column, value);
        } else if (value.IsNull()) {
            writer_.SetNull(assignment.column);
        } else {
            writer_.SetField(assignment.column, format::EncodeValue(value, column));
        }
    }
}

void RowBuilder::AssignLongValue(std::size_t column, const base::Value& value)
{
    std::erase_if(outside_, [column](const auto& former) { return former.column == column; });
    if (value.IsNull()) return writer_.SetNull(column);
    const ColumnDefinition& definition = table_->columns[column];
    std::vector<std::byte> bytes = PlainBytes(value, definition);
    if (bytes.size() > version_->longValue->inRow) return PutOutside(column, std::move(bytes));
    // In its row a memo is compressed, whatever the column says.
    if (definition.type == ColumnType::Memo) {
        bytes = format::EncodeTextOf(ContentOf<std::string>(value), definition,
                                     TextForm::CompressedIfShorter);
    }
    writer_.SetField(column, LongValueInRow(bytes));
}

// The header keeps its place in the row until the value is stored.
void RowBuilder::PutOutside(std::size_t column, std::vector<std::byte> bytes)
{
    writer_.SetField(column, std::vector<std::byte>(format::kLongValueHeaderSize));
    outside_.push_back({column, std::move(bytes)});
}

// A row that is too long gives up its longest long values first.
void RowBuilder::Shorten()
{
    while (writer_.Size() > version_->rowLimit) {
        const std::optional<std::size_t> column = LongestInRow();
        if (!column) throw base::NumberedError(3047);
        const ColumnDefinition& definition = table_->columns[*column];
        const format::Span stored = writer_.Field(*column).subspan(format::kLongValueHeaderSize);
        if (definition.type == ColumnType::Memo)
            PutOutside(*column, format::EncodeTextOf(format::DecodeTextOf(stored, definition),
                                                     definition, TextForm::Plain));
        else
            PutOutside(*column, {stored.begin(), stored.end()});
    }
}

std::optional<std::size_t> RowBuilder::LongestInRow() const
{
    std::optional<std::size_t> longest;
    std::size_t length = format::kLongValueHeaderSize;
    for (std::size_t column = 0; column < table_->columns.size(); ++column) {
        if (!format::IsLongValue(table_->columns[column].type)) continue;
        if (writer_.Field(column).size() <= length) continue;
        longest = column;
        length = writer_.Field(column).size();
    }
    return longest;
}

std::vector<std::byte> RowBuilder::Store(pages::WriteSet& changes)
{
    for (const OutsideValue& value : outside_)
        writer_.SetField(value.column,
                         LongValueStore(changes, table_->columns[value.column]).Store(value.bytes));
    return writer_.Row();
}

}  // namespace jet::table
