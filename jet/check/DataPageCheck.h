// SPDX-License-Identifier: Apache-2.0
// DataPageCheck: the head and the slots of a data page.
#pragma once

#include "jet/check/Inspection.h"
#include "jet/format/Bytes.h"

namespace jet::check {

// Whether a page is a data page whose slots can be walked without harm.
[[nodiscard]] bool HasSoundSlots(format::Span page);

// Finds what is wrong with a data page that should belong to `owner`; answers whether the slots of
// it can be walked without harm.
bool CheckDataPage(Inspection& inspection, PageNumber number, format::Span page,
                   std::uint32_t owner);

}  // namespace jet::check
