// SPDX-License-Identifier: Apache-2.0
// Open: how long a closed file takes to show the first row of its job history.
#include "bench/AfterOpening.h"
#include "bench/MdbReader.h"
#include "bench/Sqlite.h"

namespace {

// libmdb opens one table at a time.
struct MdbHistory : bench::MdbReader {
    explicit MdbHistory(const std::string& path) : MdbReader(path, "LDHistory") {}
};

int Ask(const bench::BenchShop& shop)
{
    const auto toFirstRow = [](auto& engine) { return engine.Read("SELECT * FROM LDHistory", 1); };
    bench::Contender mdb = bench::AfterOpening<MdbHistory>(
        "libmdb", shop.Mdb(), [](MdbHistory& table) { return table.ReadAll(1); });
    mdb.compared = bench::Compared::Rows;
    bench::Races races(shop.size);
    races.Run({'a', "open the file to the first row of LDHistory", 25},
              {bench::AfterOpening<bench::OurShop>("Lodrin", shop.Mdb(), toFirstRow),
               bench::AfterOpening<bench::Sqlite>("SQLite", shop.Plain(), toFirstRow, 1.5), mdb});
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
