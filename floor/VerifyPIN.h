// SPDX-License-Identifier: Apache-2.0
// VerifyPIN: asks the employee of the current board row for his PIN.
#pragma once

namespace lodrin {

struct Shop;

// True when he may proceed.
[[nodiscard]] bool VerifyPIN(Shop& shop);

}  // namespace lodrin
