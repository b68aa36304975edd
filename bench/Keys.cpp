// SPDX-License-Identifier: Apache-2.0
// Keys: whether appending in random order of the keys to a table with an index stays as quick as it
// began.
#include "bench/LazyDisk.h"
#include "bench/Race.h"
#include "bench/Sqlite.h"
#include "bench/Stopwatch.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <unistd.h>

namespace {

constexpr int kRows = 20000, kStretch = 1000;
constexpr double kTarget = 1.5;

std::vector<std::int32_t> ShuffledKeys()
{
    std::vector<std::int32_t> keys(kRows);
    std::iota(keys.begin(), keys.end(), 1);
    std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
    return keys;
}

// The time of the last thousand appends as a share of that of the first thousand. Units: medians of
// single appends, so that a neighbour's burst does not count.
double Growth(const std::function<void(std::int32_t)>& append)
{
    std::vector<double> times;
    for (const std::int32_t key : ShuffledKeys()) {
        const bench::Stopwatch stopwatch;
        append(key);
        times.push_back(stopwatch.Milliseconds());
    }
    const auto middle = [](std::vector<double> some) {
        std::sort(some.begin(), some.end());
        return some[some.size() / 2];
    };
    return middle({times.end() - kStretch, times.end()}) /
           middle({times.begin(), times.begin() + kStretch});
}

std::string NameOf(std::int32_t key)
{
    return "Customer " + std::to_string(key);
}

dao::TableDef Table()
{
    dao::TableDef table("Keyed");
    table.Append(dao::TableDef::CreateField("Number", dao::FieldType::Long));
    table.Append(dao::TableDef::CreateField("Name", dao::FieldType::Text, 60));
    table.Append(dao::IndexDef{
        .name = "PrimaryKey", .fields = {{"Number"}}, .primary = true, .unique = true});
    table.Append(dao::IndexDef{.name = "Name", .fields = {{"Name"}}});
    return table;
}

double OurGrowth(const std::string& path)
{
    bench::LazyDisk disk;
    dao::DBEngine engine({bench::Today}, disk);
    engine.CreateDatabase(path);
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(path);
    database.Append(Table());
    dao::Recordset rows = database.OpenRecordset("Keyed");
    return Growth([&](std::int32_t key) {
        rows.AddNew();
        rows["Number"] = key;
        rows["Name"] = NameOf(key);
        rows.Update();
    });
}

double SqlitesGrowth(const std::string& path)
{
    bench::Sqlite database(path);
    database.Run("PRAGMA synchronous = OFF; CREATE TABLE Keyed (Number INTEGER, Name TEXT);"
                 "CREATE UNIQUE INDEX Number ON Keyed (Number); CREATE INDEX Name ON Keyed (Name)");
    bench::SqliteStatement insert = database.Prepare("INSERT INTO Keyed VALUES (?, ?)");
    return Growth([&](std::int32_t key) { insert.Run({std::int64_t{key}, NameOf(key)}); });
}

int Ask(const bench::BenchShop& shop)
{
    const std::string path = shop.folder / ("keys-" + std::to_string(getpid()));
    bench::Races races(shop.size);
    races.Report({'k', "20,000 appends in random key order: the last 1,000 to the first 1,000", 1},
                 {.ours = OurGrowth(path + ".mdb"),
                  .limit = kTarget,
                  .unit = "",
                  .peer = "SQLite, never flushed",
                  .peers = SqlitesGrowth(path + ".sqlite")});
    std::filesystem::remove(path + ".mdb");
    std::filesystem::remove(path + ".sqlite");
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
