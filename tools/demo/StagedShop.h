// SPDX-License-Identifier: Apache-2.0
// StagedShop: the whole program with its real windows, under a clock that is set by hand.
#pragma once

#include "app/Shop.h"
#include "app/ui/QtDialogs.h"
#include "platform/StdFiles.h"
#include "platform/fake/FixedClock.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtEvents.h"
#include "platform/qt/QtInstance.h"
#include "platform/qt/QtPaths.h"
#include "platform/qt/QtPointer.h"
#include "platform/qt/QtProgram.h"
#include "platform/qt/QtPrompts.h"
#include "platform/qt/QtSystemFormats.h"

#include <filesystem>
#include <string>

namespace demo {

// Rule: the program lies in a folder of its own, where its settings, its log and its instance lock
//       are, so that nothing of an installed program is touched.
class StagedShop {
public:
    // Writes the settings: the database is the one in `shopFolder`. Both folders must exist.
    StagedShop(const std::filesystem::path& programFolder, const std::filesystem::path& shopFolder,
               base::Date now);

    // Runs Main as the program does. Errors: platform::ProgramEnded when it ends itself.
    void Start();
    // Sets the clock to a time of the same day ("09:05 AM").
    void At(std::string_view time);

    // Set when the main window has closed.
    bool closed = false;

private:
    std::filesystem::path programFolder_;

public:
    platform::FixedClock clock;
    platform::qt::QtPrompts prompts;
    platform::StdFiles files;
    platform::qt::QtPaths paths;
    platform::qt::QtClipboard clipboard;
    platform::qt::QtPointer pointer;
    platform::qt::QtEvents events;
    platform::qt::QtInstance instance;
    platform::qt::QtProgram program{{1, 0, 0}};
    platform::qt::QtSystemFormats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    platform::Services services = platform::ServicesOf(*this);
    dao::DBEngine engine{{.now = [this] { return clock.Now(); }}};
    lodrin::ui::QtDialogs dialogs;
    lodrin::Shop shop{dialogs, services, engine};
};

}  // namespace demo
