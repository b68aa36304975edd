// SPDX-License-Identifier: Apache-2.0
#include "tools/demo/StagedShop.h"

#include "app/Dispatch.h"
#include "app/modErrTrap.h"
#include "base/Calendar.h"

#include <algorithm>
#include <stdexcept>

namespace demo {

namespace {

// The folder as the program spells it: from the root of its drive when it lies there.
std::string Spelled(const std::filesystem::path& folder, const std::filesystem::path& drive)
{
    const std::string inside = folder.lexically_relative(drive).generic_string();
    if (inside.empty() || inside.starts_with("..")) return folder.string();
    std::string spelled = "\\" + inside;
    std::replace(spelled.begin(), spelled.end(), '/', '\\');
    return spelled;
}

}  // namespace

StagedShop::StagedShop(const std::filesystem::path& programFolder,
                       const std::filesystem::path& shopFolder, base::Date now)
    : programFolder_(programFolder), clock(now),
      paths(programFolder.string(), programFolder.string()),
      instance((programFolder / "Lodrin.lock").string())
{
    const std::string settings = "[FileLoc]\r\n";
    const std::string shopPath = Spelled(shopFolder, programFolder);
    files.Write((programFolder / "Lodrin.ini").string(), settings + "Lodrin=" + shopPath + "\r\n");
    files.Write((programFolder / "Ostrel.ini").string(), settings + "Ostrel=" + shopPath + "\r\n");
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
