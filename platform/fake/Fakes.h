// SPDX-License-Identifier: Apache-2.0
// Fakes: the whole world outside, under a test's control.
#pragma once

#include "platform/Services.h"
#include "platform/fake/DesktopDoubles.h"
#include "platform/fake/FixedClock.h"
#include "platform/fake/FixedFormats.h"
#include "platform/fake/FixedPaths.h"
#include "platform/fake/MemoryFiles.h"
#include "platform/fake/ScriptedPrompts.h"

namespace platform {

struct Fakes {
    FixedClock clock;
    ScriptedPrompts prompts;
    MemoryFiles files;
    FixedPaths paths;
    RecordingClipboard clipboard;
    RecordingPointer pointer;
    CountingEvents events;
    FixedInstance instance;
    FixedProgram program;
    FixedFormats formats;

    // Requires: this bundle outlives what it returns.
    [[nodiscard]] Services AsServices() { return ServicesOf(*this); }
};

}  // namespace platform
