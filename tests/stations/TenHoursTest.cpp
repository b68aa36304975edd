// SPDX-License-Identifier: Apache-2.0
// Ten hours of a shop: a whole day of many stations, by eight programs on one file, as quickly as
// they can. LODRIN_STATIONS sets how many stations there are.
#include "tests/stations/LaborLedger.h"
#include "tests/stations/Station.h"
#include "tests/stations/StationJobs.h"
#include "tests/stations/StationsShop.h"
#include "tests/support/ShopWorld.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>

namespace {

using namespace tests;

constexpr int kPrograms = 8;
constexpr std::size_t kHoursOfDay = 10;
constexpr std::size_t kSettled = 2;  // hours after which a program has read what it works with
#ifdef __SANITIZE_ADDRESS__
constexpr bool kTellsMemory = false;  // the sanitizer keeps what is given back
#else
constexpr bool kTellsMemory = true;
#endif
constexpr long kSlack = 512;  // kilobytes that an allocator keeps

// At least one for each program.
int StationsInAll()
{
    const char* const wish = std::getenv("LODRIN_STATIONS");
    return std::max(kPrograms, wish == nullptr ? 16 : std::atoi(wish));
}

// What one program said at the end of an hour.
struct Hour {
    int acts = 0;
    long memory = 0, file = 0;  // kilobytes
};

// One program: what it says is taken while it works.
struct Program {
    Process process;
    std::vector<std::string> lines;
    std::vector<Hour> hours;
};

class TenHoursTest : public StationsShop {
protected:
    // The stations in equal parts, from 1 on.
    void StartPrograms(int stations)
    {
        for (int program = 0, first = 1; program < kPrograms; ++program) {
            const int count = stations / kPrograms + (program < stations % kPrograms ? 1 : 0);
            programs.push_back({Station({"day", folder.Path().string(), std::to_string(first),
                                         std::to_string(count), std::to_string(program)}),
                                {},
                                {}});
            first += count;
        }
    }

    void WaitForAll()
    {
        std::vector<std::thread> readers;
        for (Program& program : programs)
            readers.emplace_back([&program] {
                while (program.lines.empty() || !program.lines.back().empty())
                    program.lines.push_back(program.process.Line());
            });
        for (std::thread& reader : readers)
            reader.join();
        for (Program& program : programs)
            EXPECT_EQ(program.process.Wait(), 0) << program.lines.front();
    }

    void TakeLines(Program& program)
    {
        for (const std::string& line : program.lines) {
            if (line.rfind("hour ", 0) == 0) {
                std::istringstream words(line.substr(5));
                Hour hour;
                int number = 0;
                words >> number >> hour.acts >> hour.memory >> hour.file;
                program.hours.push_back(hour);
            } else if (!line.empty() && ledger.Take(line)) {
                ++acts;
            }
        }
    }

    std::vector<Program> programs;
    LaborLedger ledger;
    int acts = 0;
};

TEST_F(TenHoursTest, EndWithASoundFileEveryHourWhereItBelongsAndNoMoreMemory)
{
    const int stations = StationsInAll();
    MakeShop(stations, 1 + stations / kSeatsOnADozen);
    StartPrograms(stations);
    WaitForAll();
    long most = 0, growth = 0, growthOfFile = 0;
    for (Program& program : programs) {
        TakeLines(program);
        ASSERT_EQ(program.hours.size(), kHoursOfDay);
        const Hour &settled = program.hours[kSettled - 1], &last = program.hours.back();
        most = std::max(most, last.memory);
        growth = std::max(growth, last.memory - settled.memory);
        growthOfFile = std::max(growthOfFile, last.file - settled.file);
        EXPECT_GT(last.acts, 2 * settled.acts);
        // A program keeps pages of the file; everything else it gives back.
        if (kTellsMemory) {
            EXPECT_LE(last.memory - settled.memory, last.file - settled.file + kSlack);
        }
    }
    ShopWorld world(folder.Path());
    const int missing = ledger.ExpectEveryHourOnItsOrder(world);
    EXPECT_EQ(world.Totals().size(), static_cast<std::size_t>(stations));
    std::cout << stations << " stations, " << acts << " acts, " << ledger.Told()
              << " told, hundredths of hours not in totals " << missing << "; memory at most "
              << most << " KB, grown by " << growth << " KB since hour " << kSettled
              << "; the file grown by " << growthOfFile << " KB\n";
    ExpectSoundFile();
}

}  // namespace
