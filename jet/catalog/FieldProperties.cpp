// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/FieldProperties.h"

#include "jet/format/PropertyBlock.h"

namespace jet::catalog {

namespace {

constexpr std::string_view kDefaultValue = "DefaultValue", kAllowZeroLength = "AllowZeroLength",
                           kRequired = "Required", kValidationRule = "ValidationRule",
                           kValidationText = "ValidationText";

}  // namespace

FieldProperties ReadProperties(const format::PropertyBlock& block, std::string_view field)
{
    return {.defaultValue = block.TextValue(field, kDefaultValue).value_or(""),
            .allowZeroLength = block.BooleanValue(field, kAllowZeroLength),
            .required = block.BooleanValue(field, kRequired),
            .validationRule = block.TextValue(field, kValidationRule).value_or(""),
            .validationText = block.TextValue(field, kValidationText).value_or("")};
}

void AddProperties(format::PropertyBlock& block, std::string_view field,
                   const FieldProperties& properties)
{
    // An empty default is no default and leaves no record.
    if (!properties.defaultValue.empty())
        block.SetMemo(field, kDefaultValue, properties.defaultValue);
    if (properties.allowZeroLength) block.SetBoolean(field, kAllowZeroLength, true);
    if (properties.required) block.SetBoolean(field, kRequired, true);
    if (!properties.validationRule.empty())
        block.SetMemo(field, kValidationRule, properties.validationRule);
    if (!properties.validationText.empty())
        block.SetText(field, kValidationText, properties.validationText);
}

}  // namespace jet::catalog
