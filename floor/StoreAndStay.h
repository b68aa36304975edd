// SPDX-License-Identifier: Apache-2.0
// StoreAndStay: stores the pending edit of a record set, which then stands on what was stored.
#pragma once

namespace dao {
class Recordset;
}

namespace lodrin {

class ResumeNext;

enum class Stored { No, NotCurrent, AndCurrent };

// Stores the pending edit and stays on the stored record.
// Rule: when nothing was stored the set stays where it is, and the edit stays pending; the bookmark
//       of the last modified record would lead to the record stored before.
Stored StoreAndStay(const ResumeNext& attempt, dao::Recordset& records);

}  // namespace lodrin
