// SPDX-License-Identifier: Apache-2.0
// RelationshipCheck: relationships as MSysRelationships lists them and as the indexes hold them.
#pragma once

#include "jet/check/CatalogCheck.h"

#include <set>
#include <string>

namespace jet::check {

// Names of the catalog's objects, in lower case.
struct ObjectNames {
    std::map<std::string, PageNumber> tables;  // of this file
    std::set<std::string> others;              // whatever else stands among the tables
    std::set<std::string> relationships;
};

// Finds relationships that only one of the two knows, sides that do not fit, and rows that refer to
// none. Requires: all tables were checked.
void CheckRelationships(Inspection& inspection, const Tables& tables, const ObjectNames& names);

}  // namespace jet::check
