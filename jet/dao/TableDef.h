// SPDX-License-Identifier: Apache-2.0
// TableDef, FieldDef, IndexDef: a table's definition, read from a database or to be appended to
// one.
#pragma once

#include "jet/dao/Types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dao {

struct FieldDef {
    std::string name;
    FieldType type = FieldType::Long;
    int size = 0;        // characters of text, bytes of binary; 0 for text means 255
    int attributes = 0;  // kAutoIncrField
    // Of a decimal: its digits, and how many of them stand behind the point.
    std::uint8_t precision = 18, scale = 0;
    std::string defaultValue;  // an expression: `0`, `""`, `Now()`; no characters means none
    bool allowZeroLength = false;
    bool required = false;
    std::string validationRule;  // an expression: `>0 And <24`, `In ("A", "B")`
    std::string validationText;  // what to say when it does not hold
};

struct IndexDef {
    std::string name;
    struct Part {
        std::string field;
        bool ascending = true;
    };
    std::vector<Part> fields;
    bool primary = false, unique = false, ignoreNulls = false, required = false;
};

// Unattached until Database::Append takes it; a read one is a copy of what the file says.
class TableDef {
public:
    explicit TableDef(std::string name) : name_(std::move(name)) {}

    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const std::vector<FieldDef>& Fields() const { return fields_; }
    [[nodiscard]] const std::vector<IndexDef>& Indexes() const { return indexes_; }

    // A field of this definition, not yet part of it. Rule: `size` counts only for text and binary.
    [[nodiscard]] static FieldDef CreateField(std::string_view name, FieldType type, int size = 0);
    // Errors: 3191 when a field has that name, 3259 for an unknown type.
    void Append(FieldDef field);
    void Append(IndexDef index);

    // Makes it a link: a name for a table of another file. `connect` is ";DATABASE=" and the path.
    // Rule: a link has no fields of its own; a read one has those of the table it leads to.
    void SetLink(std::string_view name, std::string_view connect, std::string_view sourceTable);
    [[nodiscard]] const std::string& Connect() const { return connect_; }
    [[nodiscard]] const std::string& SourceTableName() const { return sourceTable_; }

    // A rule for whole rows, and what to say when it does not hold.
    void SetValidation(std::string_view rule, std::string_view text);
    [[nodiscard]] const std::string& ValidationRule() const { return validationRule_; }
    [[nodiscard]] const std::string& ValidationText() const { return validationText_; }

private:
    std::string name_;
    std::vector<FieldDef> fields_;
    std::vector<IndexDef> indexes_;
    std::string validationRule_, validationText_;
    std::string connect_, sourceTable_;  // of a link
};

}  // namespace dao
