// SPDX-License-Identifier: Apache-2.0
// cmdEndDay: the button "End Day": the open job is closed, the day is over and added up.
#pragma once

namespace lodrin {

struct Shop;

// Rule: with the automatic end-of-day flag set nobody is asked anything, and a job that was closed
//       before and could not be taken from the board is not posted again.
void cmdEndDay_Click(Shop& shop);

}  // namespace lodrin
