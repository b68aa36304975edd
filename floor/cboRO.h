// SPDX-License-Identifier: Apache-2.0
// cboRO: the repair-order box: its list, a pick, and Enter on a typed number.
#pragma once

namespace lodrin {

struct Shop;

void GetROList(Shop& shop);
void cboRO_Click(Shop& shop);
inline constexpr int kEnterKey = 13;
// Acts on the Enter key alone.
void cboRO_KeyUp(Shop& shop, int keyCode);

}  // namespace lodrin
