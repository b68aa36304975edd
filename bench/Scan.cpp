// SPDX-License-Identifier: Apache-2.0
// Scan: one employee's day found among 500,000 jobs without an index, against SQLite's scan.
#include "bench/History.h"
#include "bench/Peer.h"
#include "bench/Timing.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int kRows = 500000;
constexpr int kTimes = 15;

base::Date Today()
{
    return {46000};
}

// Builds the file in memory, so that half a million changes need not wait for the disk one by one.
void BuildFile(const std::string& path)
{
    jet::io::MemoryFileSystem files;
    dao::DBEngine engine({Today}, files);
    engine.CreateDatabase("history.mdb");
    {
        dao::Database database = engine.DefaultWorkspace().OpenDatabase("history.mdb");
        bench::CreateHistory(database);
        dao::Recordset history = database.OpenRecordset(bench::kTable);
        for (int i = 0; i < kRows; ++i)
            bench::Append(history, bench::JobAt(i));
        database.Close();
    }
    const std::vector<std::byte>& bytes = files.Content("history.mdb");
    std::ofstream(path, std::ios::binary)
        .write(static_cast<const char*>(static_cast<const void*>(bytes.data())),
               static_cast<std::streamsize>(bytes.size()));
}

std::string Query(int employee, const char* day)
{
    return "SELECT * FROM LDHistory WHERE EmpID = " + std::to_string(employee) +
           " AND WorkDate = #" + day + "#";
}

}  // namespace

int main()
{
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "lodrin-bench-scan";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    BuildFile(folder / "history.mdb");
    bench::Peer peer(folder / "history.sqlite");
    peer.Run("BEGIN");
    for (int i = 0; i < kRows; ++i)
        peer.Append(bench::JobAt(i));
    peer.Run("COMMIT");

    dao::DBEngine engine({Today});
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(folder / "history.mdb");
    const std::string sql = Query(17, "1/15/2020");
    const double day = 43845;
    int ourRows = 0;
    int peersRows = 0;
    const auto ourScan = [&] {
        dao::Recordset rows = database.OpenRecordset(sql);
        rows.MoveLast();
        ourRows = rows.RecordCount();
    };
    const auto peersScan = [&] { peersRows = peer.Scan(17, day); };
    bench::Report("scan, first", bench::Milliseconds(1, ourScan),
                  bench::Milliseconds(1, peersScan));
    bench::Report("scan, warm", bench::Milliseconds(kTimes, ourScan),
                  bench::Milliseconds(kTimes, peersScan));
    if (ourRows != peersRows || ourRows != bench::kJobsOfADay) {
        std::printf("the engines disagree: %d and %d rows\n", ourRows, peersRows);
        return EXIT_FAILURE;
    }
    // Opening reads nothing; the peer of an opened set is a statement that is run to its end.
    const auto ourOpening = [&] { const dao::Recordset rows = database.OpenRecordset(sql); };
    bench::Report("open the set, nobody moves", bench::Milliseconds(kTimes, ourOpening),
                  bench::Milliseconds(kTimes, peersScan));
    database.Close();
    std::filesystem::remove_all(folder);
    return EXIT_SUCCESS;
}
