// SPDX-License-Identifier: Apache-2.0
// FindRecord: the searches that decide whether a procedure goes on.
#pragma once

#include "jet/dao/Recordset.h"

#include <functional>
#include <string>

namespace lodrin {

class ResumeNext;
struct Shop;

// Searches from the first record on; the set then says whether there is a match.
// Rule: false when the search itself failed, or its criteria could not be told. Then there is no
//       answer, and what the set says is the answer to the search before.
[[nodiscard]] bool Searches(const ResumeNext& attempt, dao::Recordset& records,
                            const std::function<std::string()>& criteria);

// Whether the set has such a record; it is then the current one.
// Rule: a search that fails finds nothing: the record at hand is another man's, or another order.
[[nodiscard]] bool Finds(const ResumeNext& attempt, dao::Recordset& records,
                         const std::function<std::string()>& criteria);

// The same for the record of the employee on the board's row.
[[nodiscard]] bool FindsEmployee(const ResumeNext& attempt, Shop& shop);

// The same in the open repair orders; an order that is not among them is told to the user.
[[nodiscard]] bool FindsRepairOrder(const ResumeNext& attempt, Shop& shop,
                                    const std::function<std::string()>& criteria);

}  // namespace lodrin
