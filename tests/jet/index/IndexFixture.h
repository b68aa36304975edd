// SPDX-License-Identifier: Apache-2.0
// IndexFixture: one index in a database of its own in memory, without rows behind it.
#pragma once

#include "jet/index/Index.h"
#include "jet/io/MemoryFile.h"
#include "tests/jet/index/TreeCheck.h"

#include <memory>
#include <string>
#include <vector>

namespace jet {

class IndexFixture {
public:
    // Flags of the index: none of them set.
    struct Flags {
        bool unique = false, ignoreNulls = false, required = false;
    };
    IndexFixture(std::vector<format::ColumnType> types, std::vector<bool> ascending, Flags flags,
                 const format::FileVersion& version = format::kJet4);
    // An index over one ascending long column.
    IndexFixture() : IndexFixture({format::ColumnType::Long}, {true}, {}) {}

    [[nodiscard]] index::Index Of() { return {*pager_, table_, table_.indexes.front()}; }
    [[nodiscard]] pages::Pager& Pager() { return *pager_; }
    [[nodiscard]] TreeReport Check();
    // Entry count of distinct keys as the definition page has it.
    [[nodiscard]] std::uint32_t DistinctKeys() const;

    // One atomic change.
    void Insert(const index::RowKey& key, format::RowId row);
    void Erase(const index::RowKey& key, format::RowId row);
    [[nodiscard]] std::vector<format::RowId> RowsInOrder();

private:
    io::MemoryFileSystem files_;
    std::shared_ptr<pages::Pager> pager_;
    format::TableDefinition table_;
};

}  // namespace jet
