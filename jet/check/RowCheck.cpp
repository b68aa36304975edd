// SPDX-License-Identifier: Apache-2.0
#include "jet/check/RowCheck.h"

#include "base/NumberedError.h"
#include "jet/format/CodePage.h"
#include "jet/format/ValueCodec.h"

#include <algorithm>

namespace jet::check {

namespace {

using format::ColumnDefinition;
using format::RowView;

// Whether bytes that lie in the row may still be no value of the column.
bool IsQuestionable(const ColumnDefinition& column)
{
    if (column.type == format::ColumnType::Boolean) return false;
    if (format::IsLongValue(column.type)) return true;
    if (column.type == format::ColumnType::Text) return false;
    const auto length = format::LengthOf(column.type);
    return length && !(column.fixed && column.length >= *length);
}

// By count of columns that a row knows: where the fixed ones among them end.
std::vector<std::size_t> FixedEnds(const format::TableDefinition& table)
{
    std::vector<std::size_t> ends(table.columnCounter + std::size_t{1});
    for (const ColumnDefinition& column : table.columns) {
        if (!column.fixed || column.type == format::ColumnType::Boolean) continue;
        std::size_t& end = ends[column.number + std::size_t{1}];
        end = std::max(end, table.row.number + column.fixedOffset + column.length);
    }
    for (std::size_t count = 1; count < ends.size(); ++count)
        ends[count] = std::max(ends[count], ends[count - 1]);
    return ends;
}

class RowInspector {
public:
    RowInspector(Inspection& inspection, const RowView& row, RowId at, std::size_t offset)
        : inspection_(inspection), row_(row), at_(at), offset_(offset)
    {
    }

    bool CheckShape(const std::vector<std::size_t>& fixedEnds)
    {
        const format::TableDefinition& table = row_.Table();
        if (row_.ColumnCount() > table.columnCounter) {
            Found("has " + std::to_string(row_.ColumnCount()) + " columns, the table " +
                  std::to_string(table.columnCounter));
            return false;
        }
        const std::size_t mask = format::NullMaskSize(row_.ColumnCount());
        std::size_t fixedEnd = row_.Bytes().size() - mask;
        const std::size_t variables = row_.VariableCount();
        if (variables != 0) {
            const auto end = CheckVariablePart(variables, row_.Bytes().size() - mask);
            if (!end) return false;
            fixedEnd = *end;
        }
        return fixedEnds[row_.ColumnCount()] <= fixedEnd || CheckFixedPart(fixedEnd);
    }

    void CheckField(std::size_t column, std::vector<LongValueReference>& references)
    {
        const ColumnDefinition& definition = row_.Table().columns[column];
        if (definition.type == format::ColumnType::Boolean || row_.IsNull(column)) return;
        const format::Span field = row_.Field(column);
        if (!format::IsLongValue(definition.type)) {
            (void)format::DecodeValue(field, definition);
            return;
        }
        const format::LongValueHeader header = format::ReadLongValueHeader(field);
        if (header.form != format::LongValueForm::InRow) {
            references.push_back({at_, column, header});
        } else if (!field.empty() && header.length + format::kLongValueHeaderSize != field.size()) {
            Found("column " + definition.name + " says a value of " +
                  std::to_string(header.length) + " bytes, has " +
                  std::to_string(field.size() - format::kLongValueHeaderSize));
        }
    }

    void Found(const std::string& what, DefectKind kind = DefectKind::RowShape)
    {
        inspection_.Found(kind, at_.page, offset_, "row " + RowText(at_) + " " + what);
    }

private:
    // Offsets ascend and lie inside the row. Returns where the variable values start.
    std::optional<std::size_t> CheckVariablePart(std::size_t count, std::size_t maskAt)
    {
        const format::TableDefinition& table = row_.Table();
        const std::size_t number = table.row.number;
        const std::size_t size = table.row.OffsetTable(count, row_.Bytes().size());
        if (count > table.variableColumnCounter || size + number > maskAt) {
            Found("has " + std::to_string(count) + " variable columns, the table " +
                  std::to_string(table.variableColumnCounter));
            return std::nullopt;
        }
        const std::size_t end = row_.OffsetTable();
        const bool jumps = table.row.Jumps(row_.Bytes().size()) != 0;
        std::size_t last = number;
        std::size_t first = 0;
        for (std::size_t i = 0; i <= count; ++i) {
            const std::size_t start =
                jumps ? row_.Offset(i)
                      : format::ReadNumber(row_.Bytes(), end + number * (count - i), number);
            if (start < last || start > end) {
                Found("variable value " + std::to_string(i) + " starts at " +
                      std::to_string(start));
                return std::nullopt;
            }
            if (i == 0) first = start;
            last = start;
        }
        return first;
    }

    bool CheckFixedPart(std::size_t end)
    {
        for (const ColumnDefinition& column : row_.Table().columns) {
            if (!column.fixed || column.type == format::ColumnType::Boolean) continue;
            if (column.number >= row_.ColumnCount()) continue;
            if (row_.Table().row.number + column.fixedOffset + column.length <= end) continue;
            Found("ends before its column " + column.name);
            return false;
        }
        return true;
    }

    Inspection& inspection_;
    const RowView& row_;
    RowId at_;
    std::size_t offset_;
};

}  // namespace

std::optional<RowView> ViewRow(Inspection& inspection, format::Span bytes,
                               const format::TableDefinition& table, RowId at, std::size_t offset)
{
    try {
        return RowView(bytes, table);
    } catch (const base::NumberedError& error) {
        inspection.Found(DefectKind::RowShape, at.page, offset,
                         "row " + RowText(at) + " is no row: " + error.Detail());
        return std::nullopt;
    }
}

RowCheck::RowCheck(Inspection& inspection, const format::TableDefinition& table)
    : inspection_(inspection), fixedEnds_(FixedEnds(table))
{
    for (std::size_t column = 0; column < table.columns.size(); ++column)
        if (IsQuestionable(table.columns[column])) questionable_.push_back(column);
}

bool RowCheck::Check(const RowView& row, RowId at, std::size_t offset,
                     std::vector<LongValueReference>& references) const
{
    RowInspector inspector(inspection_, row, at, offset);
    try {
        if (!inspector.CheckShape(fixedEnds_)) return false;
    } catch (const base::NumberedError& error) {
        inspector.Found("contradicts itself: " + error.Detail());
        return false;
    }
    bool readable = true;
    for (const std::size_t column : questionable_) {
        try {
            inspector.CheckField(column, references);
        } catch (const base::NumberedError& error) {
            inspector.Found("column " + row.Table().columns[column].name + ": " + error.Detail(),
                            DefectKind::RowValue);
            readable = false;
        }
    }
    return readable;
}

}  // namespace jet::check
