// SPDX-License-Identifier: Apache-2.0
// TableDesign: DAO's definitions of tables and relationships from and for the catalog.
#pragma once

#include "jet/catalog/Catalog.h"
#include "jet/dao/RelationDef.h"
#include "jet/dao/TableDef.h"

namespace dao {

[[nodiscard]] TableDef TableDefOf(const jet::catalog::OpenTable& table);
// Errors: 3170 a link that names no database.
[[nodiscard]] jet::catalog::NewLink NewLinkOf(const TableDef& table);
// The whole connect string of a link that a file tells.
[[nodiscard]] std::string ConnectOf(const jet::catalog::NewLink& link);

// Errors: 3259 unknown type, 3017 a text too wide, 3001 a counter that is neither long nor GUID,
//         3090 two counters, 3355 a default that is no expression, 3320 a rule that is none.
[[nodiscard]] jet::catalog::NewTable NewTableOf(const TableDef& table);

[[nodiscard]] RelationDef RelationDefOf(const jet::catalog::NewRelationship& relationship);
[[nodiscard]] jet::catalog::NewRelationship NewRelationshipOf(const RelationDef& relation);

}  // namespace dao
