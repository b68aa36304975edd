// SPDX-License-Identifier: Apache-2.0
// FreePages: the file's map of free pages, on page 1.
#pragma once

#include "jet/pages/WriteSet.h"

namespace jet::pages {

// Takes the lowest free page behind page `above` out of the map; when all of them are in use, the
// file grows. Errors: 3343 when the map lies, 3036 at the limit of the format.
[[nodiscard]] PageNumber TakeFreePage(WriteSet& changes, PageNumber above = PageNumber::None);

// Rule: a page that is free already is damage: 3343.
void GiveFreePage(WriteSet& changes, PageNumber page);

[[nodiscard]] bool IsFreePage(const Pager& pager, PageNumber page);

}  // namespace jet::pages
