// SPDX-License-Identifier: Apache-2.0
// Records: rows as a test reads and compares them.
#pragma once

#include "base/Value.h"

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dao {
class Recordset;
}

namespace base {

// How GoogleTest shows a value.
void PrintTo(const Value& value, std::ostream* out);

}  // namespace base

namespace tests {

// One row, taken out of the database.
struct Record {
    std::vector<std::pair<std::string, base::Value>> fields;

    // Fails the test, by std::out_of_range, for a name that is no field.
    [[nodiscard]] const base::Value& operator[](std::string_view name) const;
    // The value as a cell shows it: "7", "8:00:00 AM", "" for null.
    [[nodiscard]] std::string Text(std::string_view name) const;

    friend bool operator==(const Record&, const Record&) = default;
};

void PrintTo(const Record& record, std::ostream* out);

// All rows of a set, from the first to the last.
[[nodiscard]] std::vector<Record> RowsOf(dao::Recordset& records);

}  // namespace tests
