// SPDX-License-Identifier: Apache-2.0
// TableMaker: gives a designed table its pages: usage maps, index roots and the definition itself.
#pragma once

#include "jet/format/TableDefinition.h"
#include "jet/pages/UsageMap.h"
#include "jet/table/DefinitionPages.h"

#include <vector>

namespace jet::catalog {

// Makes usage-map rows, on one page as long as they fit.
// Rule: what does not fit there has a page for each column and each index, as the original engine
//       leaves it.
class MapPages {
public:
    // The first page is taken at once. Requires: `changes` outlives it.
    explicit MapPages(pages::WriteSet& changes);
    // Begins on a page of maps that has rows already.
    MapPages(pages::WriteSet& changes, format::PageNumber page);

    // To be called before the maps of a further table.
    void BeginTable();
    // New empty maps of one table, column or index.
    [[nodiscard]] std::vector<format::RowId> Make(std::size_t count);

private:
    [[nodiscard]] format::PageNumber NewPage();
    void TakePage();
    void Measure();

    pages::WriteSet& changes_;
    format::PageNumber page_ = format::PageNumber::None;
    std::size_t room_ = 0;  // maps the page can still take
};

// Makes the maps of a table, of its long values and of its indexes, and the indexes' empty roots.
// Requires: table.page is set.
void MakeMapsAndRoots(pages::WriteSet& changes, MapPages& maps, format::TableDefinition& table);

// Writes the definition to table.page and, when it is long, to further pages that it takes.
void WriteDefinition(pages::WriteSet& changes, format::TableDefinition& table);

// The joined bytes of a definition that is there, changed, back to its pages; takes further ones
// when they do not suffice, and gives back those that it needs no longer.
void RewriteDefinition(pages::WriteSet& changes, table::JoinedDefinition definition);

}  // namespace jet::catalog
