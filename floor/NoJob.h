// SPDX-License-Identifier: Apache-2.0
// NoJob: what the fields of the job hold while none is open.
#pragma once

#include "base/Value.h"
#include "data/Tables.h"

#include <functional>

namespace lodrin {

// Hands `write` each field of the job, with what it holds while no job is open.
void ForNoJob(const std::function<void(const BoardField& field, const base::Value& none)>& write);

}  // namespace lodrin
