// SPDX-License-Identifier: Apache-2.0
// MapCheck: usage maps read with suspicion.
#pragma once

#include "jet/check/Inspection.h"

namespace jet::check {

// The two maps of the whole file.
inline constexpr RowId kFreePages{PageNumber{1}, 0}, kSecondMap{PageNumber{1}, 1};

// The members of the map at `where`, ascending; those that lie outside the file are left out and
// found. Claims the map's row, its page and its bitmap pages. `whose` names it in texts.
// `from` is the page that refers to the map.
[[nodiscard]] std::vector<PageNumber> ReadMap(Inspection& inspection, RowId where, PageNumber table,
                                              PageNumber from, const std::string& whose);

// For each page of the file, whether the map on page 1 calls it free.
[[nodiscard]] std::vector<bool> ReadFreePages(Inspection& inspection);

}  // namespace jet::check
