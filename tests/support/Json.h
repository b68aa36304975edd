// SPDX-License-Identifier: Apache-2.0
// Json: JSON texts taken apart, so that tests can compare what they say.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tests {

struct Json;
using JsonArray = std::vector<Json>;
using JsonObject = std::map<std::string, Json>;

// Rule: null is std::monostate.
struct Json {
    std::variant<std::monostate, bool, double, std::string, JsonArray, JsonObject> content;
    friend bool operator==(const Json&, const Json&);
    friend bool operator<(const Json&, const Json&);

    // Rule: asking for what is not there throws std::out_of_range or std::bad_variant_access.
    [[nodiscard]] const Json& operator[](const std::string& name) const;
    [[nodiscard]] const std::string& Text() const { return std::get<std::string>(content); }
    [[nodiscard]] double Number() const { return std::get<double>(content); }
    [[nodiscard]] const JsonArray& Items() const { return std::get<JsonArray>(content); }
};

// Errors: std::runtime_error for a text that is no JSON.
[[nodiscard]] Json ParseJson(std::string_view text);

}  // namespace tests
