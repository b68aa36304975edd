// SPDX-License-Identifier: Apache-2.0
// StartJob: puts the employee of the current board row on a repair order.
#pragma once

#include <cstdint>

namespace lodrin {

struct Shop;

void StartJob(Shop& shop, std::int32_t roNumber);

}  // namespace lodrin
