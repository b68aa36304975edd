// SPDX-License-Identifier: Apache-2.0
// ShopTables: the tables of a small shop, and builders for their rows.
#pragma once

#include "base/Value.h"
#include "jet/dao/TableDef.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

// The management system's tables as far as the program uses them, keyed and indexed as there.
[[nodiscard]] const std::vector<dao::TableDef>& ManagementTables();
// The program's own four tables.
[[nodiscard]] const std::vector<dao::TableDef>& ProgramTables();

// A row to be added.
struct NewRow {
    std::string table;
    std::vector<std::pair<std::string, base::Value>> values;
};

// What one builder puts into the shop: one row, or several that belong together.
//
//     Employee("Jones, Bob", 8).With(Profile::PIN, "1234")
class ShopEntry {
public:
    explicit ShopEntry(std::vector<NewRow> rows) : rows_(std::move(rows)) {}

    // Sets a field in the one of its rows whose table has it.
    [[nodiscard]] ShopEntry With(std::string_view field, const base::Value& value) const;
    // Leaves out the row of that table.
    [[nodiscard]] ShopEntry Without(std::string_view table) const;

    [[nodiscard]] const std::vector<NewRow>& Rows() const { return rows_; }

private:
    std::vector<NewRow> rows_;
};

// A profile of type Employee, without PIN, at 20 an hour, and a board row whose day has not begun.
[[nodiscard]] ShopEntry Employee(const std::string& name, std::int32_t id);
// An open work order for a "1999 Ford <number>" of "Customer <number>", with the entry number
// number + 5000, all totals 0, nothing stamped.
[[nodiscard]] ShopEntry RepairOrder(std::int32_t number);
// The entry number of RepairOrder(number).
[[nodiscard]] std::int32_t EntryOf(std::int32_t number);
// A closed job of today, an hour long.
[[nodiscard]] ShopEntry ClosedJob(std::int32_t employee, std::int32_t number, base::Date day);
[[nodiscard]] ShopEntry LaborType(const std::string& code, const std::string& description);
[[nodiscard]] ShopEntry Department(const std::string& description, std::int16_t sequence);
[[nodiscard]] ShopEntry ProgressText(const std::string& description);
[[nodiscard]] ShopEntry LedgerAccount(const std::string& code, const std::string& description,
                                      bool labor);

}  // namespace tests
