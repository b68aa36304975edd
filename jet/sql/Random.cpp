// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Random.h"

#include <random>

namespace jet::sql {

std::int32_t RandomNumber()
{
    std::random_device source;
    while (true)
        if (const std::uint32_t number = source(); number != 0)
            return static_cast<std::int32_t>(number);
}

base::Guid RandomGuid()
{
    std::random_device source;
    base::Guid guid;
    for (std::uint8_t& byte : guid.bytes)
        byte = static_cast<std::uint8_t>(source() & 0xFFU);
    // What says that chance made it.
    guid.bytes[6] = static_cast<std::uint8_t>((guid.bytes[6] & 0x0FU) | 0x40U);
    guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3FU) | 0x80U);
    return guid;
}

}  // namespace jet::sql
