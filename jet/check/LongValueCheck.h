// SPDX-License-Identifier: Apache-2.0
// LongValueCheck: the long values of one column, from the rows that refer to them and back.
#pragma once

#include "jet/check/RowCheck.h"

#include <span>

namespace jet::check {

// `owned` are the pages of the column's map, ascending; they are claimed here.
void CheckLongValues(Inspection& inspection, const format::TableDefinition& table,
                     std::size_t column, const std::vector<PageNumber>& owned,
                     std::span<const LongValueReference> references);

// A value's bytes without finding anything; nothing when it cannot be read whole.
[[nodiscard]] std::optional<std::vector<std::byte>>
LongValueBytes(const pages::Pager& pager, const format::LongValueHeader& header);

}  // namespace jet::check
