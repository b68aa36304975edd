// SPDX-License-Identifier: Apache-2.0
// Action: UPDATE, INSERT and DELETE carried out.
#pragma once

#include "jet/sql/Ast.h"
#include "jet/sql/Session.h"

#include <cstdint>

namespace jet::sql {

enum class OnRowError { PassOver, Stop };

// Runs an action statement; the answer is the number of rows it changed.
//
// Rule:   the rows are chosen before the first is changed, and all changed in one write set. A row
//         that a rule, a key or a lock refuses ends the statement with nothing written, or is
//         passed over; then each row is a write set of its own.
// Errors: 3065 a SELECT, 3078, 3192 and 3127 unknown names, 3061, 3464, 3063, 3346; 3073 a table
//         that cannot be written; with Stop also 3022, 3058, 3314, 3315, 3163, 3421.
std::int32_t Execute(Statement statement, const Session& session, OnRowError onRowError);

}  // namespace jet::sql
