// SPDX-License-Identifier: Apache-2.0
// QtServices: the world outside as the desktop provides it.
#pragma once

#include "platform/Services.h"
#include "platform/StdFiles.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtEvents.h"
#include "platform/qt/QtInstance.h"
#include "platform/qt/QtPaths.h"
#include "platform/qt/QtPointer.h"
#include "platform/qt/QtProgram.h"
#include "platform/qt/QtPrompts.h"
#include "platform/qt/QtSystemFormats.h"

namespace platform::qt {

struct QtServices {
    // Requires: a QApplication.
    explicit QtServices(Version version)
        : paths(QtPaths::RunningProgramFolder()), instance(QtInstance::MachineLockFile()),
          program(version)
    {
    }

    QtClock clock;
    QtPrompts prompts;
    StdFiles files;
    QtPaths paths;
    QtClipboard clipboard;
    QtPointer pointer;
    QtEvents events;
    QtInstance instance;
    QtProgram program;
    QtSystemFormats formats;

    // Requires: this bundle outlives what it returns.
    [[nodiscard]] Services AsServices() { return ServicesOf(*this); }
};

}  // namespace platform::qt
