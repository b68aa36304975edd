// SPDX-License-Identifier: Apache-2.0
// EmployeeRow: an employee's record and his row on the board, written together.
#pragma once

#include "base/Value.h"
#include "data/Tables.h"
#include "floor/StoreAndStay.h"
#include "jet/dao/Recordset.h"
#include "platform/controls/Grid.h"

#include <functional>

namespace lodrin {

class ResumeNext;

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
