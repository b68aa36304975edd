// SPDX-License-Identifier: Apache-2.0
// Field: a name or a place bound to a record set, read when asked for its value and written when
// assigned.
#pragma once

#include "base/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace dao {

class Recordset;

// A borrowed name: it follows the record set's current row. Requires: the record set outlives it.
// Errors: those of Recordset, 3265 for a name that is no field, and when assigned 3020 without
//         Edit or AddNew, 3421 unsuitable value, 3163 text too long, 3164 a counter, 3162 null
//         boolean.
class Field {
public:
    Field(Recordset& records, std::string name) : records_(&records), name_(std::move(name)) {}
    // From 0.
    Field(Recordset& records, int place) : records_(&records), place_(place) {}
    Field(const Field&) = default;

    [[nodiscard]] base::Value Value() const;
    // NOLINTNEXTLINE(google-explicit-constructor): a field reads as its value.
    operator base::Value() const { return Value(); }

    // Converts to the field's type and puts it into the pending edit.
    // Rule: a failing assignment leaves the pending edit as it was.
    Field& operator=(const base::Value& value);
    // The value of the other field, not its binding.
    Field& operator=(const Field& other);

private:
    Recordset* records_;
    std::string name_;          // of a field that is bound by it
    std::optional<int> place_;  // of any other
};

}  // namespace dao
