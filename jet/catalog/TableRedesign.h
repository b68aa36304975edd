// SPDX-License-Identifier: Apache-2.0
// TableRedesign: a table that is there gets an index, or loses one.
#pragma once

#include "jet/format/SortKey.h"
#include "jet/format/TableDefinition.h"
#include "jet/table/DefinitionPages.h"

#include <vector>

namespace jet::catalog {

// Collects changes of one definition; what it does not change stays byte for byte.
//
//     TableRedesign design(changes, page);
//     design.Remove(index.number);
//     design.Write();
//
// Requires: `changes` outlives it.
class TableRedesign {
public:
    TableRedesign(pages::WriteSet& changes, format::PageNumber table);

    // Takes pages for the tree and adds it; the answer is its number.
    [[nodiscard]] std::uint32_t Add(format::IndexDefinition tree);
    // Errors: 3284, 3001.
    void Add(const format::NamedIndex& index, format::SortOrder order);
    // Removes a named index by its number, and its tree with all its pages when no other index has
    // that tree. Rule: an index that is not there needs no removing. Errors: 3343 when the tree's
    // map names pages that are not the tree's.
    void Remove(std::uint32_t number);

    [[nodiscard]] format::TableDefinition Table() const;
    void Write();

private:
    void GiveBack(const format::TableDefinition& table, std::uint32_t tree);
    void RequireOwnPages(const format::TableDefinition& table, std::uint32_t tree,
                         const std::vector<format::PageNumber>& pages) const;

    pages::WriteSet& changes_;
    table::JoinedDefinition joined_;
};

}  // namespace jet::catalog
