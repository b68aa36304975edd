// SPDX-License-Identifier: Apache-2.0
// RowWriter: puts the fields of a row together to its stored bytes.
#pragma once

#include "jet/format/RowView.h"

#include <vector>

namespace jet::format {

// Requires: the table outlives it.
// Rule:     columns are addressed by their place in TableDefinition::columns. The row is written in
//           the table's present shape; dropped columns keep their places and hold nothing.
class RowWriter {
public:
    // A row whose columns are all null and whose booleans are all false.
    explicit RowWriter(const TableDefinition& table);
    // A row with the fields of a stored one. Errors: 3343.
    explicit RowWriter(const RowView& row);

    void SetNull(std::size_t column);
    void SetBoolean(std::size_t column, bool value);
    // Requires: a column that is not boolean.
    // Errors:   3343 when a fixed column's length is not that of its type.
    void SetField(std::size_t column, std::vector<std::byte> bytes);

    [[nodiscard]] bool IsNull(std::size_t column) const { return !fields_[column].present; }
    [[nodiscard]] Span Field(std::size_t column) const { return fields_[column].bytes; }

    // Bytes of the row as it stands.
    [[nodiscard]] std::size_t Size() const;
    // Requires: Size() is within a page.
    [[nodiscard]] std::vector<std::byte> Row() const;

private:
    struct StoredField {
        bool present = false;
        std::vector<std::byte> bytes;
    };
    [[nodiscard]] std::size_t FixedSize() const;
    void PutVariablePart(MutableSpan row, std::size_t maskAt) const;
    // Places of the variable columns that hold something, by their index among the variable ones.
    [[nodiscard]] std::vector<const StoredField*> VariableFields() const;

    const TableDefinition* table_;
    std::vector<StoredField> fields_;
};

}  // namespace jet::format
