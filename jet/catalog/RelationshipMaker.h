// SPDX-License-Identifier: Apache-2.0
// RelationshipMaker: gives two tables that are there the indexes of an enforced relationship, and
// takes them away.
#pragma once

#include "jet/catalog/NewRelationship.h"
#include "jet/format/SortKey.h"
#include "jet/format/TableDefinition.h"
#include "jet/pages/WriteSet.h"

namespace jet::catalog {

// Adds an index to each table, each naming the other; fills the new tree with the rows there are.
//
// Rule:   the column pairs come to stand in the order of the referenced table's index.
// Errors: 3015 no unique index over the referenced columns, 3615 columns of different types, 3284
//         an index of the relationship's name, 3001 too many indexes, 3201 a row that refers to
//         none.
// Source: docs/format/relationships.md
void MakeRelationIndexes(pages::WriteSet& changes, NewRelationship& wish,
                         format::PageNumber referenced, format::PageNumber referencing,
                         format::SortOrder order);

// Takes both indexes of the relationship away, and their trees where nothing else names them. False
// when the table has none of that name.
[[nodiscard]] bool RemoveRelationIndexes(pages::WriteSet& changes, const std::string& name,
                                         format::PageNumber referencing);

}  // namespace jet::catalog
