// SPDX-License-Identifier: Apache-2.0
// EmployeeRow: an employee's record and his row on the board, written together.
#pragma once

#include "app/ResumeNext.h"
#include "base/Value.h"
#include "data/Tables.h"
#include "jet/dao/Recordset.h"
#include "platform/controls/Grid.h"

#include <functional>

namespace lodrin {

// Hands `write` each field of the job, with what it holds while no job is open.
void ForNoJob(const std::function<void(const BoardField& field, const base::Value& none)>& write);

enum class Stored { No, NotCurrent, AndCurrent };

// Stores the pending edit and stays on the stored record.
// Rule: when nothing was stored the set stays where it is, and the edit stays pending; the bookmark
//       of the last modified record would lead to the record stored before.
Stored StoreAndStay(const ResumeNext& attempt, dao::Recordset& records);

// The board's convention: a value goes into the record, then what the record holds goes into the
// board's column. Requires: the record set and the board stand on the same employee.
class EmployeeRow {
public:
    EmployeeRow(const ResumeNext& attempt, dao::Recordset& employee, platform::Grid& board)
        : attempt_(attempt), employee_(employee), board_(board)
    {
    }

    // Puts the record into edit mode and opens the board for editing.
    void Edit();
    // Two statements. A value that has to be read first fails inside the first of them.
    void Write(const BoardField& field, const std::function<base::Value()>& value);
    void Write(const BoardField& field, const dao::Field& value);
    // Empties the fields of the job.
    void ClearJob();
    // Stores the record, stays on it, and closes the board for editing.
    Stored Save();

private:
    const ResumeNext& attempt_;
    dao::Recordset& employee_;
    platform::Grid& board_;
};

}  // namespace lodrin
