// SPDX-License-Identifier: Apache-2.0
// Program: whether the program itself, its procedures over the real engine, starts and shows an
// employee as quickly in a large shop as in a small one.
#include "bench/Race.h"
#include "bench/StationShop.h"

namespace {

// Starts with a closed file in every turn.
bench::Contender Starting(const std::string& name, bench::StationShop& shop)
{
    const auto start = [&shop] {
        shop.Start();
        return bench::Reading{};
    };
    return {.name = name,
            .work = start,
            .prepare = [&shop] { shop.End(); },
            .compared = bench::Compared::Nothing};
}

// Another employee in every turn. Both shops have as many.
bench::Contender Choosing(const std::string& name, bench::StationShop& shop)
{
    const auto choose = [&shop, names = shop.Names(), turn = std::size_t{0}]() mutable {
        shop.Choose(names[turn++ % names.size()]);
        return bench::Reading{};
    };
    return {.name = name, .work = choose, .compared = bench::Compared::Nothing};
}

int Ask(const bench::BenchShop& shop)
{
    const bench::BenchShop small{"S", shop.folder.parent_path() / "S"};
    const bench::WorkingCopy ourCopy(shop.Mdb());
    const bench::WorkingCopy smallCopy(small.Mdb());
    bench::StationShop ours(ourCopy.Folder());
    bench::StationShop smalls(smallCopy.Folder());
    bench::Races races(shop.size);
    // The ones who are new on the board are added in the first start, which does not count.
    bench::Contender peer = Starting("the same on S", smalls);
    peer.target = 1.5;
    races.Run({'l', "the program from its start to the filled board", 7},
              {Starting("Lodrin", ours), peer});
    peer = Choosing("the same on S", smalls);
    peer.target = 1.3;
    races.Run({'l', "choosing another employee", 39}, {Choosing("Lodrin", ours), peer});
    if (ours.JobsShown() != smalls.JobsShown()) races.Fail("other lists in the two shops");
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
