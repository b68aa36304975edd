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

}  // namespace platform
