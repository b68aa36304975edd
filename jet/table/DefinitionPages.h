// SPDX-License-Identifier: Apache-2.0
// DefinitionPages: a table's definition as its pages hold it, with the counters kept there.
#pragma once

#include "jet/format/TableDefinition.h"
#include "jet/pages/WriteSet.h"

#include <cstdint>
#include <vector>

namespace jet::table {

using format::PageNumber;

// The bytes of a chain of definition pages, put together, and the pages themselves.
struct JoinedDefinition {
    std::vector<std::byte> bytes;
    std::vector<PageNumber> pages;
};

// Errors: 3343 when a page is of another kind, or the chain is shorter than it says.
[[nodiscard]] JoinedDefinition JoinDefinition(const pages::Pager& pager, PageNumber first);

// The definition that begins on page `first`. Errors: 3343.
[[nodiscard]] format::TableDefinition LoadDefinition(const pages::Pager& pager, PageNumber first);

// Overwrites what writing rows changes in a definition (row count, last counter value, entry
// counts) with zeros, so that two readings are equal when the table's design is.
void BlankCounters(std::vector<std::byte>& joined, const format::FileVersion& version);

// Counters on a table's first definition page. Errors: 3343.
[[nodiscard]] std::uint32_t StoredRowCount(const pages::Pager& pager, PageNumber table);
void ChangeRowCount(pages::WriteSet& changes, PageNumber table, std::int32_t difference);
[[nodiscard]] std::int32_t LastAutoNumber(const pages::Pager& pager, PageNumber table);
void SetLastAutoNumber(pages::WriteSet& changes, PageNumber table, std::int32_t value);
// The step from one counter value to the next.
[[nodiscard]] std::int32_t AutoNumberIncrement(const pages::Pager& pager, PageNumber table);

}  // namespace jet::table
