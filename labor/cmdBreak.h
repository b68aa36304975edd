// SPDX-License-Identifier: Apache-2.0
// cmdBreak: the button "Go On Break": the open job is closed, the day goes on without one.
#pragma once

namespace lodrin {

struct Shop;

void cmdBreak_Click(Shop& shop);

}  // namespace lodrin
