// SPDX-License-Identifier: Apache-2.0
// RowEntries: the entries an index must have, made from the rows of its table.
#pragma once

#include "jet/index/Index.h"
#include "jet/table/NativeTable.h"

#include <memory>
#include <string>
#include <vector>

namespace jet {

using Entries = std::vector<std::vector<std::byte>>;

// Every table of a database by its definition page, system tables included.
[[nodiscard]] std::vector<format::PageNumber> TablesOf(const std::shared_ptr<pages::Pager>& pager);

// In key order.
[[nodiscard]] Entries EntriesOfRows(const table::NativeTable& table, const index::Index& index,
                                    const format::IndexDefinition& definition);

// What one index has against its rows and its own rules; nothing when all is well.
[[nodiscard]] std::vector<std::string> FaultsOfIndex(pages::Pager& pager,
                                                     const table::NativeTable& table,
                                                     const format::IndexDefinition& definition);

}  // namespace jet
