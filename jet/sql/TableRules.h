// SPDX-License-Identifier: Apache-2.0
// TableRules: what a table's properties and relationships demand of its rows.
#pragma once

#include "base/NumberedError.h"
#include "jet/catalog/Relationships.h"
#include "jet/sql/Functions.h"
#include "jet/sql/Operators.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet::sql {

// Required, AllowZeroLength, the validation rules and the relationships.
//
// Rule:   of a stored row the assigned fields are looked at, of a new one all. A field's rule must
//         be true; a new field that nobody gave a value is not held against it. The row's rule must
//         not be false.
// Errors: 3314 null in a required field, 3315 empty text where none may be, 3316 and 3317 a rule
//         that does not hold; 3344, 3388 and 3320 one that cannot be worked out, so that nothing
//         is stored that it might refuse; 3343 properties that cannot be read, for the same reason;
//         and those of catalog::Relationships.
class TableRules final : public table::RowRules {
public:
    // Requires: `table` stays where it is and outlives the rules.
    TableRules(const catalog::OpenTable& table, std::function<base::Date()> now,
               catalog::TableAt tableAt);

    void Check(const table::RowToStore& row) const override;
    void Follow(pages::WriteSet& changes, const table::ChangedRow& row) const override
    {
        relationships_.Follow(changes, row);
    }

private:
    // A rule made ready, or what is wrong with it.
    struct Rule {
        ExpressionPtr expression;  // null: there is none, or it cannot be worked out
        std::optional<base::NumberedError> fault;
        std::string owner;  // field or table, as messages name it
        catalog::ValidationRule said;
    };
    void CheckField(std::size_t column, const table::RowToStore& row) const;
    [[nodiscard]] Truth Outcome(const Rule& rule, const table::RowToStore& row) const;
    [[noreturn]] static void Refuse(const Rule& rule);
    [[nodiscard]] ExpressionPtr Bound(const std::string& text, std::string_view field) const;
    [[nodiscard]] Rule Prepared(const catalog::ValidationRule& rule, std::string_view field) const;
    [[nodiscard]] const std::vector<Rule>& Rules() const;

    const catalog::OpenTable& table_;
    Environment environment_;
    catalog::Relationships relationships_;
    // By column, then that of whole rows; read when the first row is stored.
    mutable std::vector<Rule> rules_;
};

}  // namespace jet::sql
