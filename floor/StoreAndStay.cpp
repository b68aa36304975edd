// SPDX-License-Identifier: Apache-2.0
#include "floor/StoreAndStay.h"

#include "app/ResumeNext.h"
#include "jet/dao/Recordset.h"

namespace lodrin {

Stored StoreAndStay(const ResumeNext& attempt, dao::Recordset& records)
{
    if (!attempt.Succeeds([&] { records.Update(); })) return Stored::No;
    const bool stays = attempt.Succeeds([&] { records.SetBookmark(records.LastModified()); });
    return stays ? Stored::AndCurrent : Stored::NotCurrent;
}

}  // namespace lodrin
