// SPDX-License-Identifier: Apache-2.0
#include "floor/NoJob.h"

namespace lodrin {

void ForNoJob(const std::function<void(const BoardField& field, const base::Value& none)>& write)
{
    write(LDEmp::VehDesc, "");
    write(LDEmp::Customer, "");
    write(LDEmp::WONumber, base::Null{});
    write(LDEmp::WOID, base::Null{});
    write(LDEmp::GLType, "");
    write(LDEmp::StartJob, base::Null{});
}

}  // namespace lodrin
