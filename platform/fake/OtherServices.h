// SPDX-License-Identifier: Apache-2.0
// OtherServices: a world outside in which one thing is another than usual.
#pragma once

#include "platform/Services.h"

#include <type_traits>

namespace platform {

// The same world with `other` in the place of its like.
//
//     BusyPrompts prompts;
//     platform::Services services = platform::With(fakes.AsServices(), prompts);
template <class Other>
[[nodiscard]] Services With(const Services& world, Other& other)
{
    const auto pick = [&other](auto& usual) -> auto&
    {
        if constexpr (std::is_base_of_v<std::remove_reference_t<decltype(usual)>, Other>)
            return static_cast<decltype(usual)>(other);
        else
            return usual;
    };
    return {.clock = pick(world.clock),
            .prompts = pick(world.prompts),
            .files = pick(world.files),
            .paths = pick(world.paths),
            .clipboard = pick(world.clipboard),
            .pointer = pick(world.pointer),
            .events = pick(world.events),
            .instance = pick(world.instance),
            .program = pick(world.program),
            .formats = pick(world.formats)};
}

}  // namespace platform
