// SPDX-License-Identifier: Apache-2.0
// mnuSetup: the menu items that set the shop up and refresh its repair orders.
#pragma once

#include <cstdint>

namespace lodrin {

struct Shop;

// The chosen item of the menu "&Setup". Rule: only item 0, "Status Descriptions", does anything:
//       its window is made when it is first asked for and the same one is shown again later.
void mnuSetupItems_Click(Shop& shop, std::int16_t index);

// "Synchronize &RO's": the list of repair orders is rebuilt; nothing is asked or said.
void mnuSynchRO_Click(Shop& shop);

}  // namespace lodrin
