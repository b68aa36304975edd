// SPDX-License-Identifier: Apache-2.0
// GetDataPath: the folder of the database, from the settings or from the user.
#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "app/modGlobal.h"
#include "base/Text.h"
#include "data/DBOpen.h"

#include <string>

namespace lodrin {

namespace {

constexpr const char* kLocateNow =
    "The Ostrel database could not be located.  Do you wish to locate it now? (Selecting no will "
    "end the program.)";
constexpr const char* kLocateTitle = "Database Not Found Warning";
constexpr const char* kFilter = "Ostrel (Kelvaro.mdb)|Kelvaro.mdb|ALL (*.*)|*.*";
constexpr const char* kNothingSelected =
    "You have not selected a database! You will not be able to use the Lodrin program until the "
    "appropriate database is selected.";

std::string LodrinIni(const Shop& shop)
{
    return shop.platform.paths.ProgramFolder() + std::string(kLodrinIni);
}

std::string StoredPath(const Shop& shop)
{
    return ReadIniString(shop.platform, kFileLoc, kLodrinKey, "", LodrinIni(shop));
}

// The folder of a file: its path without the title and the separator before it. Errors: 5 when
// there is no folder.
std::string FolderOf(const std::string& path)
{
    const std::string title = path.substr(path.find_last_of("\\/") + 1);
    return base::Left(path, static_cast<long>(base::Length(path)) -
                                static_cast<long>(base::Length(title)) - 1);
}

}  // namespace

void GetDataPath(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!GetDataPath()");
    std::string& dataPath = shop.values.DataPath;

    // The folder chosen before. Whether the database is there shows when it is opened.
    dataPath.clear();
    const auto settingsExist = [&] {
        return FileExists(shop.platform, shop.platform.paths.ProgramFolder() + "\\lodrin.ini");
    };
    if (attempt.Test(settingsExist, IfItFails::TakeBranch))
        attempt([&] { dataPath = StoredPath(shop); });

    // Without one the user is asked until there is one or he gives up.
    const platform::Box question{
        .text = kLocateNow, .title = kLocateTitle, .buttons = platform::Buttons::YesNo};
    while (dataPath.empty()) {
        const auto givesUp = [&] { return Ask(shop, question) == platform::Answer::No; };
        if (attempt.Test(givesUp, IfItFails::TakeBranch)) shop.platform.program.End();
        attempt([&] { mnuFileOpen_Click(shop); });
    }
}

void mnuFileOpen_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!mnuFileOpen_Click()");
    platform::Services& services = shop.platform;
    std::string& dataPath = shop.values.DataPath;

    // A cancelled dialog leaves no file name, and the folder stays what it was.
    std::string fileName;
    attempt([&] { fileName = AskFile(shop, kFilter); });
    if (!fileName.empty()) attempt([&] { dataPath = FolderOf(fileName); });

    // The folder is stored even then, and read back as it was stored.
    attempt([&] { services.pointer.Hourglass(); });
    attempt([&] { WriteIniString(services, kFileLoc, kLodrinKey, dataPath, LodrinIni(shop)); });
    if (!dataPath.empty()) {
        attempt([&] { dataPath = StoredPath(shop); });
        attempt([&] { DBOpen(shop); });
    } else {
        attempt([&] { Say(shop, kNothingSelected); });
    }
    attempt([&] { services.pointer.Default(); });
}

}  // namespace lodrin
