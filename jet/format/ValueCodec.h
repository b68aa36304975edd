// SPDX-License-Identifier: Apache-2.0
// ValueCodec: one field's value between its stored bytes and base::Value.
#pragma once

#include "base/Value.h"
#include "jet/format/Bytes.h"
#include "jet/format/TableDefinition.h"
#include "jet/format/TextCompression.h"

#include <vector>

namespace jet::format {

// The kind of base::Value that each column type holds:
//
//   Boolean bool     Byte uint8      Integer int16   Long int32    Currency Currency
//   Single float     Double double   Date Date       Text string   Memo string
//   Binary Bytes     Ole Bytes       Guid Guid       Numeric Decimal of the column's scale
//
// Columns of any other type are read as raw bytes.
// Source: docs/format/row.md

// Requires: a column that is neither boolean nor a long value; bytes of a value that is not null.
// Errors:   3343 when there are too few bytes.
[[nodiscard]] base::Value DecodeValue(Span bytes, const ColumnDefinition& column);

// Requires: a column that is neither boolean nor a long value; a value that is not null.
// Rule:     a text is compressed where the column allows it; in a fixed column it is filled up
//           with blanks.
// Errors:   3421 when the value is not of the column's own type or is a text that its code page
//           cannot hold, 3163 when it is too long for it.
[[nodiscard]] std::vector<std::byte> EncodeValue(const base::Value& value,
                                                 const ColumnDefinition& column);

// Stored texts, of Text and Memo columns alike.
// Rule:   only UTF-16 has a compressed form.
// Errors: 3421 for text that the column's code page cannot hold, 3251 for an unknown code page.
[[nodiscard]] std::string DecodeTextOf(Span bytes, const ColumnDefinition& column);
[[nodiscard]] std::vector<std::byte> EncodeTextOf(std::string_view text,
                                                  const ColumnDefinition& column, TextForm form);

// Memo and Ole: their values live in long values of their own.
[[nodiscard]] constexpr bool IsLongValue(ColumnType type)
{
    return type == ColumnType::Memo || type == ColumnType::Ole;
}

}  // namespace jet::format
