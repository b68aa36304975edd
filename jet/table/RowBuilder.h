// SPDX-License-Identifier: Apache-2.0
// RowBuilder: a row to be stored, made of assigned values, before any page is changed.
#pragma once

#include "jet/format/FileVersion.h"
#include "jet/format/RowWriter.h"
#include "jet/pages/WriteSet.h"
#include "jet/table/RowSource.h"

#include <span>
#include <vector>

namespace jet::table {

// Requires: the table outlives it.
//
//     RowBuilder builder(table, assignments, version);     // every check
//     const auto bytes = builder.Store(changes);            // the first change
class RowBuilder {
public:
    // A new row. Errors: 3421, 3163 and 3251 of EncodeValue, 3047 a row too large for its page.
    RowBuilder(const format::TableDefinition& table, std::span<const Assignment> values,
               const format::FileVersion& version);
    // A stored row with some of its values replaced. Errors: the same, and 3343.
    RowBuilder(const format::RowView& row, std::span<const Assignment> values,
               const format::FileVersion& version);

    // Stores the long values that do not stay in the row and answers the row's bytes.
    [[nodiscard]] std::vector<std::byte> Store(pages::WriteSet& changes);

private:
    struct OutsideValue {
        std::size_t column = 0;
        std::vector<std::byte> bytes;
    };
    void Assign(std::span<const Assignment> values);
    void AssignLongValue(std::size_t column, const base::Value& value);
    void PutOutside(std::size_t column, std::vector<std::byte> bytes);
    void Shorten();
    [[nodiscard]] std::optional<std::size_t> LongestInRow() const;

    const format::TableDefinition* table_;
    const format::FileVersion* version_;
    format::RowWriter writer_;
    std::vector<OutsideValue> outside_;
};

}  // namespace jet::table
