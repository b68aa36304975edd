// SPDX-License-Identifier: Apache-2.0
// CarryOver: closes the days that employees left open on an earlier date.
#pragma once

namespace lodrin {

class ResumeNext;
struct Shop;

// Clocks everybody out at 11:59 PM of the day he worked last, unless that is today: his open job is
// recorded and posted, his totals are written, and his day is cleared.
//
// Rule: the working date alone decides. It stays on the row: until he comes back, the totals of
//       that day are written at every start, also when he had ended the day himself. A day that
//       cannot be cleared although its job was recorded is closed, with its job, once more: the
//       history cannot tell that job from a like one of the day after, while the working date
//       stays, and a job that was worked is never dropped.
void CloseForgottenDays(const ResumeNext& attempt, Shop& shop);

}  // namespace lodrin
