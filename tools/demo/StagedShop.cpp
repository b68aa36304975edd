// SPDX-License-Identifier: Apache-2.0
#include "tools/demo/StagedShop.h"

#include "app/Dispatch.h"
#include "app/modErrTrap.h"
#include "base/Calendar.h"

#include <stdexcept>

namespace demo {

StagedShop::StagedShop(const std::filesystem::path& programFolder,
                       const std::filesystem::path& shopFolder, base::Date now)
    : programFolder_(programFolder), clock(now),
      paths(programFolder.string(), programFolder.string()),
      instance((programFolder / "Lodrin.lock").string())
{
    const std::string settings = "[FileLoc]\r\n";
    files.Write((programFolder / "Lodrin.ini").string(),
                settings + "Lodrin=" + shopFolder.string() + "\r\n");
    files.Write((programFolder / "Ostrel.ini").string(),
                settings + "Ostrel=" + shopFolder.string() + "\r\n");
    dialogs.mainClosed = [this] { closed = true; };
    dialogs.leave = [](int) { throw std::logic_error("the program ended itself"); };
}

void StagedShop::Start()
{
    lodrin::Dispatch(shop, &lodrin::Main);
}

void StagedShop::At(std::string_view time)
{
    const std::optional<base::Date> read = base::ReadDate(time);
    if (!read) throw std::logic_error("no time: " + std::string(time));
    clock.Set({base::DatePartOf(clock.Now()).days + read->days});
}

}  // namespace demo
