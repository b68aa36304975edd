// SPDX-License-Identifier: Apache-2.0
// GetHistory: the day's jobs and the last ten jobs of the current employee.
#pragma once

namespace lodrin {

struct Shop;

void GetHistory(Shop& shop);
void GetHistoryView(Shop& shop);
void GetLast10(Shop& shop);
void lstHistory_DblClick(Shop& shop);

}  // namespace lodrin
