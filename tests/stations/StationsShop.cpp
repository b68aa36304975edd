// SPDX-License-Identifier: Apache-2.0
#include "tests/stations/StationsShop.h"

#include "jet/io/StdFile.h"
#include "tests/stations/StationJobs.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"

namespace tests {

void StationsShop::MakeShop(int seats, int dozensOfOrders)
{
    ShopWorld world(folder.Path());
    world.MakeDatabase();
    for (int seat = 1; seat <= seats; ++seat)
        world.Given({Employee(NameOfSeat(seat), seat)});
    for (int order = 0; order < dozensOfOrders * kOrdersAtATime; ++order)
        world.Given({RepairOrder(kFirstOrder + order)});
}

void StationsShop::ExpectSoundFile()
{
    jet::io::StdFileSystem files;
    EXPECT_SPOTLESS(files, file.string());
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "Kelvaro.ldb"));
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".journal"));
}

}  // namespace tests
