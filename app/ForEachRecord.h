// SPDX-License-Identifier: Apache-2.0
// ForEachRecord: the one loop over records, which cannot run for ever when the records fail.
#pragma once

#include "app/ResumeNext.h"
#include "jet/dao/Recordset.h"

#include <concepts>

namespace lodrin {

// Runs `body` for each record from the current one to the last.
//
//     attempt([&] { employees.MoveFirst(); });
//     ForEachRecord(attempt, employees, [&] { CloseOutDay(attempt, employees, shop); });
//
// Rule: stops when the end cannot be read or the move fails; both are reported once.
void ForEachRecord(const ResumeNext& attempt, dao::Recordset& records, std::invocable auto&& body)
{
    bool onRecord = true;
    while (onRecord && !attempt.Test([&] { return records.Eof(); }, IfItFails::TakeBranch)) {
        body();
        onRecord = attempt.Succeeds([&] { records.MoveNext(); });
    }
}

}  // namespace lodrin
