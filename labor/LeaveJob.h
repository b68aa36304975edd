// SPDX-License-Identifier: Apache-2.0
// LeaveJob: what an employee does who stops working on his job, for a break or for the day.
#pragma once

#include <cstdint>

namespace lodrin {

class ResumeNext;
struct Shop;

// Entry number of the repair order on the board's row; 0 when no job is open.
[[nodiscard]] std::int32_t OrderOfJob(Shop& shop);

// Shows the progress dialog for that order; false when he cancels it.
[[nodiscard]] bool TellsProgress(const ResumeNext& attempt, Shop& shop);

// Makes that order the current one, so that the job's labor goes there. One that is not listed is
// told to the user.
// Rule: without a job there is no order either.
[[nodiscard]] bool FindsOrderOfJob(const ResumeNext& attempt, Shop& shop);

}  // namespace lodrin
