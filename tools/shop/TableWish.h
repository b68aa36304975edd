// SPDX-License-Identifier: Apache-2.0
// TableWish: short ways to say which fields and indexes a table has.
#pragma once

#include "jet/catalog/NewTable.h"

#include <string_view>

namespace tools::shop {

//     TableWish("Payment").Counter("PaymentID").Long("EntryNumber").Money("Amount")
//         .Index("EntryNumber", {{"EntryNumber"}})
class TableWish {
public:
    using Type = jet::format::ColumnType;
    using Parts = std::vector<jet::catalog::NewIndex::Part>;

    explicit TableWish(std::string_view name) { table_.name = name; }

    // A counter with the primary key over it.
    TableWish& Counter(std::string_view name);
    TableWish& Field(std::string_view name, Type type, int size = 0);
    // Several fields of one type.
    TableWish& Fields(Type type, std::initializer_list<std::string_view> names);
    // May hold empty text; starts empty.
    TableWish& Text(std::string_view name, int size);
    // The field named last must have a value.
    TableWish& Required();
    TableWish& Default(std::string_view expression);
    TableWish& Rule(std::string_view rule, std::string_view text);

    TableWish& Primary(Parts parts);
    TableWish& Index(std::string_view name, Parts parts);
    // No two rows with one key; rows without it do not count.
    TableWish& Unique(std::string_view name, Parts parts);

    // NOLINTNEXTLINE(google-explicit-constructor): the wish is the table.
    operator jet::catalog::NewTable() const { return table_; }

private:
    jet::catalog::NewTable table_;
};

}  // namespace tools::shop
