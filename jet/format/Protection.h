// SPDX-License-Identifier: Apache-2.0
// Protection: how a file is kept from curious eyes.
#pragma once

#include <cstdint>
#include <string>

namespace jet::format {

// Of a file whose pages are stored as they are.
inline constexpr std::uint32_t kNotEncoded = 0;

struct Protection {
    std::uint32_t encodingKey = kNotEncoded;  // under which the pages are stored
    std::string password;                     // empty: none is asked for
};

}  // namespace jet::format
