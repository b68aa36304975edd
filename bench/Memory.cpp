// SPDX-License-Identifier: Apache-2.0
// Memory: what the program needs at most: opening, the filled board, twenty employees, twenty job
// changes.
#include "bench/Race.h"
#include "bench/StationShop.h"
#include "tests/support/OwnMemory.h"

namespace {

constexpr std::size_t kTimes = 20;
constexpr double kLimit = 256;

bench::Figure Now()
{
    const auto most = static_cast<double>(tests::OwnMemory("VmHWM"));
    return {.ours = most / 1024, .limit = kLimit, .unit = " MB"};
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
