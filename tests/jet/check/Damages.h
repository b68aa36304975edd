// SPDX-License-Identifier: Apache-2.0
// Damages: the named kinds of damage that tests plant into a sound file.
#pragma once

#include "jet/check/Defect.h"
#include "tests/jet/check/DamageFixture.h"

#include <span>
#include <string_view>

namespace tests {

struct Damage {
    std::string_view name;
    jet::check::DefectKind found;  // what must be found
    void (*plant)(DamagedFile&);
};

// Each of them can be planted in either format.
[[nodiscard]] std::span<const Damage> Damages();

}  // namespace tests
