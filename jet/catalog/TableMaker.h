// SPDX-License-Identifier: Apache-2.0
// TableMaker: gives a designed table its pages: usage maps, index roots and the definition itself.
#pragma once

#include "jet/format/TableDefinition.h"
#include "jet/pages/UsageMap.h"

namespace jet::catalog {

// Makes usage-map rows, on one page as long as they fit, then on further ones.
class MapPages {
public:
    // The first page is taken at once. Requires: `changes` outlives it.
    explicit MapPages(pages::WriteSet& changes);

    // A new empty map. `together`: how many maps, this one included, must share its page.
    [[nodiscard]] format::RowId Make(std::size_t together = 1);

private:
    void TakePage();

    pages::WriteSet& changes_;
    format::PageNumber page_ = format::PageNumber::None;
    std::size_t room_ = 0;  // maps the page can still take
};

// Makes the maps of a table, of its long values and of its indexes, and the indexes' empty roots.
// Requires: table.page is set.
void MakeMapsAndRoots(pages::WriteSet& changes, MapPages& maps, format::TableDefinition& table);

// Writes the definition to table.page and, when it is long, to further pages that it takes.
void WriteDefinition(pages::WriteSet& changes, format::TableDefinition& table);

}  // namespace jet::catalog
