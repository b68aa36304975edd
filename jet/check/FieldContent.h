// SPDX-License-Identifier: Apache-2.0
// FieldContent: the values of named columns, as the rows of system tables are read.
#pragma once

#include "jet/format/RowView.h"
#include "jet/format/ValueCodec.h"

#include <optional>
#include <string_view>

namespace jet::check {

// Nothing when there is no such column, when it is null or of another kind than T.
// Errors: 3343 when the row contradicts itself.
template <class T>
[[nodiscard]] std::optional<T> ContentOf(const format::RowView& row, std::string_view name)
{
    const auto column = row.Table().FindColumn(name);
    if (!column || row.IsNull(*column)) return std::nullopt;
    const base::Value value = format::DecodeValue(row.Field(*column), row.Table().columns[*column]);
    const T* content = value.As<T>();
    if (content == nullptr) return std::nullopt;
    return *content;
}

}  // namespace jet::check
