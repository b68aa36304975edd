// SPDX-License-Identifier: Apache-2.0
// DefinitionCheck: a table definition, its chain of pages and what it says of itself.
#pragma once

#include "jet/check/Inspection.h"
#include "jet/format/TableDefinition.h"

namespace jet::check {

// Claims the pages of the chain. Nothing (and a finding) when the definition cannot be read.
[[nodiscard]] std::optional<format::TableDefinition> CheckDefinition(Inspection& inspection,
                                                                     PageNumber first);

}  // namespace jet::check
