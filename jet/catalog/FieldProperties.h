// SPDX-License-Identifier: Apache-2.0
// FieldProperties: what a table's property block says of one field.
#pragma once

#include <string>
#include <string_view>

namespace jet::format {
class PropertyBlock;
}

namespace jet::catalog {

struct FieldProperties {
    std::string defaultValue;  // an expression; empty means none
    bool allowZeroLength = false;
    bool required = false;
    std::string validationRule, validationText;
    friend bool operator==(const FieldProperties&, const FieldProperties&) = default;
};

// What `block` says of the field. Rule: what it does not say is false or empty.
[[nodiscard]] FieldProperties ReadProperties(const format::PropertyBlock& block,
                                             std::string_view field);

// Adds what differs from false and empty, and nothing else.
void AddProperties(format::PropertyBlock& block, std::string_view field,
                   const FieldProperties& properties);

}  // namespace jet::catalog
