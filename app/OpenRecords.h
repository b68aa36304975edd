// SPDX-License-Identifier: Apache-2.0
// OpenRecords: the records of a query, whose text stays in the window's state.
#pragma once

#include "app/MainWindowState.h"
#include "app/ResumeNext.h"

#include <concepts>
#include <string_view>

namespace lodrin {

// Opens what `sql` answers. Where the text itself fails, the one before is opened once more; the
// failure is reported.
void OpenRecords(const ResumeNext& attempt, MainWindowState& state, dao::Database& database,
                 dao::Recordset& records, std::invocable auto&& sql)
{
    attempt([&] { state.sqlText = sql(); });
    attempt([&] { records = database.OpenRecordset(state.sqlText); });
}

// The same for a text that is always the same.
inline void OpenRecords(const ResumeNext& attempt, MainWindowState& state, dao::Database& database,
                        dao::Recordset& records, std::string_view sql)
{
    OpenRecords(attempt, state, database, records, [&] { return sql; });
}

}  // namespace lodrin
