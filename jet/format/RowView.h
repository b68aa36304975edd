// SPDX-License-Identifier: Apache-2.0
// RowView: one stored row's bytes, field by field, without making values.
#pragma once

#include "base/Value.h"
#include "jet/format/Bytes.h"
#include "jet/format/TableDefinition.h"

namespace jet::format {

struct FileVersion;

// A view. Requires: bytes, table and version outlive it.
// Rule:   columns are addressed by their place in TableDefinition::columns. A column added after
// the
//         row was written is null (a boolean false).
// Errors: 3343 when the row contradicts itself.
class RowView {
public:
    RowView(Span bytes, const TableDefinition& table, const FileVersion& version);

    [[nodiscard]] bool IsNull(std::size_t column) const;
    // A boolean column's value; it lives in the null mask.
    [[nodiscard]] bool Boolean(std::size_t column) const;
    // The stored bytes of a non-null, non-boolean column; of Memo and Ole, the long-value header.
    [[nodiscard]] Span Field(std::size_t column) const;

    [[nodiscard]] Span Bytes() const { return bytes_; }
    [[nodiscard]] const TableDefinition& Table() const { return *table_; }

private:
    Span bytes_;
    const TableDefinition* table_;
    const FileVersion* version_;
};

}  // namespace jet::format
