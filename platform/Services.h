// SPDX-License-Identifier: Apache-2.0
// Services: the world outside, as one value that is passed.
#pragma once

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Prompts.h"
#include "platform/SystemFormats.h"

namespace platform {

struct Services {
    Clock& clock;
    Prompts& prompts;
    Files& files;
    Paths& paths;
    Clipboard& clipboard;
    Pointer& pointer;
    Events& events;
    Instance& instance;
    Program& program;
    SystemFormats& formats;
};

// The members of a bundle that has one of each, under the same names.
// Requires: the bundle outlives what is returned.
template <class Bundle>
[[nodiscard]] Services ServicesOf(Bundle& bundle)
{
    return {.clock = bundle.clock,
            .prompts = bundle.prompts,
            .files = bundle.files,
            .paths = bundle.paths,
            .clipboard = bundle.clipboard,
            .pointer = bundle.pointer,
            .events = bundle.events,
            .instance = bundle.instance,
            .program = bundle.program,
            .formats = bundle.formats};
}

}  // namespace platform
