// SPDX-License-Identifier: Apache-2.0
// Rows: one row found, changed and added at a time, each change safe on the disk, against SQLite.
#include "bench/History.h"
#include "bench/Peer.h"
#include "bench/Timing.h"
#include "jet/dao/DBEngine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

constexpr int kRows = 300;
constexpr int kTimes = 100;

base::Date Today()
{
    return {46000};
}

// The repair order of the `turn`-th question: all over the table.
int OrderAt(int turn)
{
    return bench::JobAt((turn * 611) % kRows).workOrder;
}

}  // namespace

int main()
{
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "lodrin-bench-rows";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    dao::DBEngine engine({Today});
    engine.CreateDatabase(folder / "history.mdb");
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(folder / "history.mdb");
    bench::CreateHistory(database);
    bench::Peer peer(folder / "history.sqlite");

    int next = 0;
    int peersNext = 0;
    dao::Recordset history = database.OpenRecordset(bench::kTable);
    const auto ourInsert = [&] { bench::Append(history, bench::JobAt(next++)); };
    const auto peersInsert = [&] { peer.Append(bench::JobAt(peersNext++)); };
    bench::Report("insert", bench::Milliseconds(kRows, ourInsert),
                  bench::Milliseconds(kRows, peersInsert));

    dao::Recordset rows = database.OpenRecordset("SELECT * FROM LDHistory");
    int turn = 0;
    int found = 0;
    const auto ourFind = [&] {
        rows.FindFirst("WONumb = " + std::to_string(OrderAt(turn++)));
        found += rows.NoMatch() ? 0 : 1;
    };
    int peersTurn = 0;
    int peersFound = 0;
    const auto peersFind = [&] { peersFound += peer.Find(OrderAt(peersTurn++)) != 0 ? 1 : 0; };
    bench::Report("find, no index", bench::Milliseconds(kTimes, ourFind),
                  bench::Milliseconds(kTimes, peersFind));
    if (found != kTimes || peersFound != kTimes) {
        std::printf("not found: %d and %d\n", kTimes - found, kTimes - peersFound);
        return EXIT_FAILURE;
    }

    rows.MoveFirst();
    const auto ourUpdate = [&] {
        rows.Edit();
        rows["Hrs"] = static_cast<double>(turn++);
        rows.Update();
        rows.MoveNext();
    };
    std::int64_t id = 1;
    const auto peersUpdate = [&] { peer.SetHours(id++, static_cast<double>(peersTurn++)); };
    bench::Report("update", bench::Milliseconds(kTimes, ourUpdate),
                  bench::Milliseconds(kTimes, peersUpdate));
    database.Close();
    std::filesystem::remove_all(folder);
    return EXIT_SUCCESS;
}
