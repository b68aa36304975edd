// SPDX-License-Identifier: Apache-2.0
#include "data/Kelvaro.h"

#include "app/Shop.h"

namespace lodrin {

std::string KelvaroIn(const std::string& folder)
{
    return folder + "\\Kelvaro.mdb";
}

dao::Database OpenKelvaro(Shop& shop)
{
    const std::string path = shop.platform.paths.ToHost(KelvaroIn(shop.values.DataPath));
    return shop.engine.DefaultWorkspace().OpenDatabase(path);
}

}  // namespace lodrin
