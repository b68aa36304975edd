// SPDX-License-Identifier: Apache-2.0
#include "labor/JobOnBoard.h"

#include "data/Tables.h"
#include "platform/controls/Grid.h"

namespace lodrin {

std::string JobOnBoard(const platform::Grid& board)
{
    std::string job;
    for (const BoardField& field : {LDEmp::EmpID, LDEmp::WorkDate, LDEmp::StartJob, LDEmp::WOID})
        job += board.Text(field.column) + " ";
    return job;
}

}  // namespace lodrin
