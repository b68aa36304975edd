// SPDX-License-Identifier: Apache-2.0
#include "labor/EditRepairOrder.h"

#include "base/NumberedError.h"

namespace lodrin {

namespace {

constexpr int kChangedByAnother = 3197;
// Each try that meets a change has read it; eight stations at full speed need two or three.
constexpr int kTries = 10;

}  // namespace

void EditRepairOrder(dao::Recordset& repairOrder)
{
    for (int tries = 1;; ++tries) {
        try {
            return repairOrder.Edit();
        } catch (const base::NumberedError& error) {
            if (error.Number() != kChangedByAnother || tries == kTries) throw;
        }
    }
}

}  // namespace lodrin
