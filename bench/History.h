// SPDX-License-Identifier: Apache-2.0
// History: the jobs that the questions add, and the days they ask for.
#pragma once

#include "bench/BenchShop.h"
#include "bench/Sqlite.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// An employee and one of his working days.
struct Day {
    std::int32_t employee = 0;
    double date = 0;

    // As they stand in a query.
    [[nodiscard]] std::string Employee() const { return std::to_string(employee); }
    [[nodiscard]] std::string DateText() const;
};

// Days with jobs, all over the history; the same ones for the same shop.
[[nodiscard]] std::vector<Day> SomeDays(const BenchShop& shop, int count);

// Adds a closed job on that day to the history; the number-th, so that both engines add the same.
void AddJob(dao::Recordset& history, const Day& day, int number);
void AddJob(SqliteStatement& history, const Day& day, int number);
inline constexpr const char* kSqliteAddJob =
    "INSERT INTO LDHistory (EmpID, WorkDate, JobStart, JobEnd, WONumb, WOID, GLType, Hrs, VehDesc,"
    " Customer) VALUES (?,?,?,?,?,?,?,?,?,?)";

}  // namespace bench
