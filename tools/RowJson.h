// SPDX-License-Identifier: Apache-2.0
// RowJson: values and rows as JSON, for people, programs and tests that compare.
#pragma once

#include "jet/table/RowSource.h"

#include <string>
#include <string_view>

namespace tools {

// A JSON string with its quotes.
[[nodiscard]] std::string JsonText(std::string_view text);

// null, true and false; numbers; everything else as text: dates "YYYY-MM-DDTHH:MM:SS" rounded to
// the second, currency with four decimals, decimals with their scale, bytes as lower-case hex
// digits, GUIDs in braces.
[[nodiscard]] std::string ValueJson(const base::Value& value);

// One object on one line, fields in field order.
[[nodiscard]] std::string RowJson(const jet::table::RowSource& table,
                                  const jet::format::RowView& row);

}  // namespace tools
