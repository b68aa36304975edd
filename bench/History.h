// SPDX-License-Identifier: Apache-2.0
// History: the rows of a shop's job history that both engines are measured on.
#pragma once

#include "jet/dao/Database.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

// One closed job. Units: dates are day serials, hours are decimal.
struct Job {
    std::int32_t employee;
    double workDate, jobStart, jobEnd, hours;
    std::int32_t workOrder, entryNumber;
    const char* laborType;
    std::string vehicle, customer;
};

inline constexpr std::string_view kTable = "LDHistory";
inline constexpr int kEmployees = 40;
inline constexpr int kFirstDay = 42736;  // 1/1/2017
inline constexpr int kJobsOfADay = 5;

// The number-th job of a shop in which every employee closes five jobs a day.
[[nodiscard]] Job JobAt(int number);

// The table as the program creates it, without rows.
void CreateHistory(dao::Database& database);
// Appends one job through an open record set.
void Append(dao::Recordset& history, const Job& job);

}  // namespace bench
