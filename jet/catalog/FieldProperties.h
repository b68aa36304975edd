// SPDX-License-Identifier: Apache-2.0
// FieldProperties: what a table's property block says of one field.
#pragma once

#include <string>

namespace jet::catalog {

struct FieldProperties {
    std::string defaultValue;  // an expression; empty means none
    bool allowZeroLength = false;
    bool required = false;
    std::string validationRule, validationText;
};

}  // namespace jet::catalog
