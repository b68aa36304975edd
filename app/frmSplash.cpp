// SPDX-License-Identifier: Apache-2.0
#include "app/frmSplash.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "app/modGlobal.h"

#include <string>

namespace lodrin {

void frmSplash::Form_Load(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmSplash!Form_Load()");
    const platform::Services& services = shop.platform;

    // Where the management system keeps its database; this program finds its own way there.
    std::string path;
    attempt([&] {
        path = ReadIniString(services, kFileLoc, kOstrelKey, "",
                             services.paths.ProgramFolder() + std::string(kOstrelIni));
    });
    attempt([&] {
        const platform::Version version = services.program.VersionNumbers();
        lblVersion.SetCaption(
            "Version " + std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
            std::to_string(version.revision) + std::string(10, ' ') + "Database Path - " + path);
    });
}

}  // namespace lodrin
