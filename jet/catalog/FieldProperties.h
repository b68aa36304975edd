// SPDX-License-Identifier: Apache-2.0
// FieldProperties: what a table's property block says of one field, and its rule for whole rows.
#pragma once

#include <string>
#include <string_view>

namespace jet::format {
class PropertyBlock;
}

namespace jet::catalog {

// What must hold of a field or of a row, and what to say when it does not.
struct ValidationRule {
    std::string expression;  // empty means none
    std::string text;        // empty means the engine's own words
    friend bool operator==(const ValidationRule&, const ValidationRule&) = default;
};

struct FieldProperties {
    std::string defaultValue;  // an expression; empty means none
    bool allowZeroLength = false;
    bool required = false;
    ValidationRule rule;
    friend bool operator==(const FieldProperties&, const FieldProperties&) = default;
};

// The default values of counters that draw by chance: of a long and of a GUID.
inline constexpr std::string_view kRandomCounter = "GenUniqueID()", kGuidCounter = "GenGUID()";

// Adds what marks a counter as one that draws by chance.
void AddRandomCounter(format::PropertyBlock& block, std::string_view field);
void AddGuidCounter(format::PropertyBlock& block, std::string_view field);

// What `block` says of the field. Rule: what it does not say is false or empty.
[[nodiscard]] FieldProperties ReadProperties(const format::PropertyBlock& block,
                                             std::string_view field);

// The rule of a field, of whole rows when `field` is empty.
[[nodiscard]] ValidationRule ReadRule(const format::PropertyBlock& block, std::string_view field);
void AddRule(format::PropertyBlock& block, std::string_view field, const ValidationRule& rule);

// Adds what differs from false and empty, and nothing else.
void AddProperties(format::PropertyBlock& block, std::string_view field,
                   const FieldProperties& properties);

}  // namespace jet::catalog
