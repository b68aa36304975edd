// SPDX-License-Identifier: Apache-2.0
// FindRecord: the searches that decide whether a procedure goes on.
#pragma once

#include "jet/dao/Recordset.h"

#include <functional>
#include <string>

namespace lodrin {

class ResumeNext;
struct Shop;

// Whether the set has such a record; it is then the current one.
// Rule: a search that fails finds nothing: the record at hand is another man's, or another order.
//       So does one whose criteria cannot be told.
[[nodiscard]] bool Finds(const ResumeNext& attempt, dao::Recordset& records,
                         const std::function<std::string()>& criteria);

// The same in the open repair orders; an order that is not among them is told to the user.
[[nodiscard]] bool FindsRepairOrder(const ResumeNext& attempt, Shop& shop,
                                    const std::function<std::string()>& criteria);

}  // namespace lodrin
