// SPDX-License-Identifier: Apache-2.0
// Memory: what the program needs at most: opening, the filled board, twenty employees, twenty job
// changes.
#include "bench/Race.h"
#include "bench/StationShop.h"

#include <fstream>
#include <stdexcept>

namespace {

constexpr std::size_t kTimes = 20;
constexpr double kLimit = 256;

// The most this process ever had in memory. Units: megabytes.
double MostMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word != "VmHWM:") continue;
        double kilobytes = 0;
        status >> kilobytes;
        return kilobytes / 1024;
    }
    throw std::runtime_error("the system does not tell the memory of a process");
}

bench::Figure Now()
{
    return {.ours = MostMemory(), .limit = kLimit, .unit = " MB"};
}

int Ask(const bench::BenchShop& shop)
{
    const bench::WorkingCopy copy(shop.Mdb());
    bench::StationShop program(copy.Folder());
    bench::Races races(shop.size);
    program.Start();
    races.Report({'m', "resident memory after the start", 1}, Now());
    const std::vector<std::string> names = program.Names();
    const std::vector<std::int32_t> orders = program.OpenOrders();
    for (std::size_t i = 0; i < kTimes; ++i)
        program.Choose(names[i % names.size()]);
    races.Report({'m', "and after choosing 20 employees", 1}, Now());
    for (std::size_t i = 0; i < kTimes; ++i) {
        program.Choose(names[i % names.size()]);
        program.ChangeJob(names[i % names.size()], orders[i % orders.size()]);
    }
    races.Report({'m', "and after 20 job changes", 1}, Now());
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
