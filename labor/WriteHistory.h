// SPDX-License-Identifier: Apache-2.0
// WriteHistory: closes the open job of the current board row into one history row.
#pragma once

namespace lodrin {

struct Shop;

void WriteHistory(Shop& shop);

}  // namespace lodrin
