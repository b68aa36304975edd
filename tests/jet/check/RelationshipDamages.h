// SPDX-License-Identifier: Apache-2.0
// RelationshipDamages: the kinds of damage that concern relationships.
#pragma once

#include "jet/pages/Pager.h"
#include "tests/jet/check/Damages.h"

#include <memory>

namespace tests {

// Makes a table Part whose rows refer to jobs, deletes cascading, with one row of it. The answer is
// the file opened for writing.
std::shared_ptr<jet::pages::Pager> RelateParts(DamagedFile& file);

[[nodiscard]] std::span<const Damage> RelationshipDamages();

}  // namespace tests
