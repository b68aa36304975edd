// SPDX-License-Identifier: Apache-2.0
// AfterOpening: a contender who opens a file in each of its turns and asks it once.
#pragma once

#include "bench/Race.h"

#include <memory>
#include <optional>
#include <string>

namespace bench {

// `ask` is given the opened engine. Rule: what the turn before had open is closed between the
// turns, which is not timed.
template <class Engine, class Ask>
[[nodiscard]] Contender AfterOpening(const std::string& name, const std::string& path, Ask ask,
                                     std::optional<double> target = {})
{
    const auto open = std::make_shared<std::optional<Engine>>();
    const auto openAndAsk = [open, path, ask]() mutable {
        open->emplace(path);
        return ask(**open);
    };
    return {
        .name = name, .work = openAndAsk, .target = target, .prepare = [open] { open->reset(); }};
}

}  // namespace bench
