// SPDX-License-Identifier: Apache-2.0
// Scan: the whole job history read, one field of it and all of them.
#include "bench/Machine.h"
#include "bench/MdbReader.h"
#include "bench/Sqlite.h"

namespace {

constexpr const char* kAllJobs = "SELECT * FROM LDHistory";
constexpr const char* kSum = "SELECT COUNT(*) AS Jobs, SUM(Hrs) AS Total FROM LDHistory";

// One row with the count and the sum, as rows and their sum.
bench::Reading Unfolded(const bench::Reading& row, const bench::Reading& read)
{
    return {.rows = row.rows, .sum = read.rows + read.sum};
}

int Ask(const bench::BenchShop& shop)
{
    bench::OurShop ours(shop.Mdb());
    bench::Sqlite sqlite(shop.Plain());
    bench::MdbReader mdb(shop.Mdb(), "LDHistory");
    const bench::TablePages pages(shop.Mdb(), "LDHistory");
    bench::Races races(shop.size);

    races.Run({'b', "count all jobs and add up `Hrs`, one statement", 9},
              {{"Lodrin", [&] { return ours.Read(kSum); }},
               {"SQLite", [&] { return sqlite.Read(kSum); }, 0.35},
               {"libmdb", [&] { return Unfolded({.rows = 1}, mdb.Sum("Hrs")); }, 0.15},
               pages.Reading()});
    races.Run({'c', "walk all jobs, every field read", 5},
              {{"Lodrin", [&] { return ours.Read(kAllJobs); }},
               {"SQLite", [&] { return sqlite.Read(kAllJobs); }, 0.5},
               {.name = "libmdb",
                .work = [&] { return mdb.ReadAll(); },
                .target = 0.2,
                .compared = bench::Compared::Rows},
               pages.Reading()});
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
