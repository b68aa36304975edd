// SPDX-License-Identifier: Apache-2.0
// EmployeesDay: what the window asks of the job history for one employee, put to both engines.
#pragma once

#include "bench/History.h"

namespace bench {

// One of the window's three questions.
struct DayQuestion {
    char first = 'd', later = 'e';  // letters of the question asked first after opening, and later
    const char* name;
    int together;  // how often it is asked in one turn, later
    Reading (*ours)(OurShop& shop, const Day& day);
    Reading (*sqlites)(const Sqlite& database, const Day& day);
};

// His jobs of the day, the newest first; their count and sum; the last ten of all his jobs, walked
// backwards from the last row of all of them.
[[nodiscard]] const std::vector<DayQuestion>& DayQuestions();

// The last ten as somebody would ask SQLite who need not walk backwards.
[[nodiscard]] Reading LastTenByNumber(const Sqlite& database, const Day& day);

}  // namespace bench
