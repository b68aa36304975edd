// SPDX-License-Identifier: Apache-2.0
// modRecLib: fnCN, which gives a null its default.
#pragma once

#include "base/Value.h"

#include <cstdint>

namespace lodrin {

// Type codes of text, for fnCN.
inline constexpr std::int16_t kString = 8;
inline constexpr std::int16_t kVariant = 12;

struct Shop;

// The value itself, unless it is null: then the empty text for the codes of text, 0 for all others.
//
//     fnCN(shop, board.Value(LDEmp::WOID.column), 0)  // 0 when no job is open
//
// Rule: codes that stand for text in the database (7 and 10 among them) give 0 too. The only thing
//       that can fail is the memory for a copy.
[[nodiscard]] base::Value fnCN(Shop& shop, const base::Value& value, std::int16_t typeCode);

}  // namespace lodrin
