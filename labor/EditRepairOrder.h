// SPDX-License-Identifier: Apache-2.0
// EditRepairOrder: a repair order is changed as it is now, not as it was when it was found.
#pragma once

#include "jet/dao/Recordset.h"

namespace lodrin {

// Begins to change the current repair order. Every station and the management system add to the
// same orders all day: what one of them stored since ours was found is read and built upon, for a
// refusal here would cost the job's hours on the order while its labor line stays.
// Errors: those of Recordset::Edit; 3197 only when others change the order again and again.
void EditRepairOrder(dao::Recordset& repairOrder);

}  // namespace lodrin
