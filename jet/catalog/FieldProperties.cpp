// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/FieldProperties.h"

#include "jet/format/PropertyBlock.h"

namespace jet::catalog {

namespace {

constexpr std::string_view kDefaultValue = "DefaultValue", kAllowZeroLength = "AllowZeroLength",
                           kRequired = "Required", kValidationRule = "ValidationRule",
                           kValidationText = "ValidationText", kGuidColumn = "ColIsGuid";
constexpr std::uint8_t kGuidColumnFlag = 0x81;

}  // namespace

FieldProperties ReadProperties(const format::PropertyBlock& block, std::string_view field)
{
    return {.defaultValue = block.TextValue(field, kDefaultValue).value_or(""),
            .allowZeroLength = block.BooleanValue(field, kAllowZeroLength),
            .required = block.BooleanValue(field, kRequired),
            .rule = ReadRule(block, field)};
}

ValidationRule ReadRule(const format::PropertyBlock& block, std::string_view field)
{
    return {.expression = block.TextValue(field, kValidationRule).value_or(""),
            .text = block.TextValue(field, kValidationText).value_or("")};
}

void AddRule(format::PropertyBlock& block, std::string_view field, const ValidationRule& rule)
{
    if (!rule.expression.empty()) block.SetMemo(field, kValidationRule, rule.expression);
    if (!rule.text.empty()) block.SetText(field, kValidationText, rule.text);
}

void AddProperties(format::PropertyBlock& block, std::string_view field,
                   const FieldProperties& properties)
{
    // An empty default is no default and leaves no record.
    if (!properties.defaultValue.empty())
        block.SetMemo(field, kDefaultValue, properties.defaultValue);
    if (properties.allowZeroLength) block.SetBoolean(field, kAllowZeroLength, true);
    if (properties.required) block.SetBoolean(field, kRequired, true);
    AddRule(block, field, properties.rule);
}

void AddRandomCounter(format::PropertyBlock& block, std::string_view field)
{
    block.SetMemo(field, kDefaultValue, kRandomCounter);
}

void AddGuidCounter(format::PropertyBlock& block, std::string_view field)
{
    block.SetText(field, kDefaultValue, kGuidCounter);
    block.SetText({}, kGuidColumn, field, kGuidColumnFlag);
}

}  // namespace jet::catalog
