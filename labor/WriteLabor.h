// SPDX-License-Identifier: Apache-2.0
// WriteLabor: posts the history row just stored to the management system.
#pragma once

namespace lodrin {

struct Shop;

void WriteLabor(Shop& shop);

}  // namespace lodrin
