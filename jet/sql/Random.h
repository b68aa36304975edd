// SPDX-License-Identifier: Apache-2.0
// Random: values that nobody has had before.
#pragma once

#include "base/Value.h"

#include <cstdint>

namespace jet::sql {

// Any number but 0.
[[nodiscard]] std::int32_t RandomNumber();
[[nodiscard]] base::Guid RandomGuid();

}  // namespace jet::sql
