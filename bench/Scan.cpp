// SPDX-License-Identifier: Apache-2.0
// Scan: 500,000 jobs read without an index, against SQLite reading the same rows without one.
#include "bench/History.h"
#include "bench/Peer.h"
#include "bench/Timing.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <variant>

namespace {

constexpr int kRows = 500000;
constexpr int kAll = std::numeric_limits<int>::max();

base::Date Today()
{
    return {46000};
}

// Builds the file in memory, so that half a million changes need not wait for the disk one by one.
void BuildFile(const std::filesystem::path& path)
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

void BuildPeer(const std::filesystem::path& path)
{
    bench::Peer peer(path);
    peer.Run("BEGIN");
    for (int i = 0; i < kRows; ++i)
        peer.Append(bench::JobAt(i));
    peer.Run("COMMIT");
}

void AddField(bench::Reading& reading, const base::Value& value)
{
    if (const auto* const text = value.As<std::string>()) return reading.AddText(text->size());
    if (const auto* const date = value.As<base::Date>()) return reading.AddNumber(date->days);
    if (const auto* const whole = value.As<std::int32_t>()) return reading.AddNumber(*whole);
    if (const auto* const number = value.As<double>()) return reading.AddNumber(*number);
}

bench::Reading Read(dao::Database& database, const std::string& sql, int limit)
{
    dao::Recordset rows = database.OpenRecordset(sql);
    const int fields = rows.FieldCount();
    bench::Reading reading;
    for (; reading.rows < limit && !rows.Eof(); rows.MoveNext()) {
        for (int field = 0; field < fields; ++field)
            AddField(reading, rows[field].Value());
        ++reading.rows;
    }
    return reading;
}

// The same question to both. The peer keeps a date as its number.
struct Question {
    const char* name;
    std::string ours, peers;
    int limit = kAll;
    int times = 15;
};

// Both engines on their files.
class Race {
public:
    explicit Race(const std::filesystem::path& folder) : folder_(folder) {}

    // Asked of files that have been open for long, their pages known.
    void Warm(const Question& question)
    {
        ourAnswer_ = Read(database_, question.ours, question.limit);
        peersAnswer_ = peer_.Read(question.peers, question.limit);
        Run(
            question, [&] { ourAnswer_ = Read(database_, question.ours, question.limit); },
            [&] { peersAnswer_ = peer_.Read(question.peers, question.limit); });
    }

    // Asked of files that are opened for it; the system has their pages in memory.
    void Opening(const Question& question)
    {
        const auto ours = [&] {
            dao::DBEngine engine({Today});
            dao::Database database = engine.DefaultWorkspace().OpenDatabase(OurPath());
            ourAnswer_ = Read(database, question.ours, question.limit);
        };
        const auto peers = [&] {
            const bench::Peer peer = bench::Peer::Reopened(PeersPath());
            peersAnswer_ = peer.Read(question.peers, question.limit);
        };
        Run(question, ours, peers);
    }

    [[nodiscard]] bool Agreed() const { return agreed_; }

private:
    void Run(const Question& question, const std::function<void()>& ours,
             const std::function<void()>& peers)
    {
        const bench::Times times = bench::InTurn(question.times, ours, peers);
        bench::Report(question.name, times.ours, times.peers);
        if (ourAnswer_ == peersAnswer_) return;
        std::printf("the engines disagree: %d and %d rows, %f and %f\n", ourAnswer_.rows,
                    peersAnswer_.rows, ourAnswer_.sum, peersAnswer_.sum);
        agreed_ = false;
    }
    [[nodiscard]] std::string OurPath() const { return folder_ / "history.mdb"; }
    [[nodiscard]] std::string PeersPath() const { return folder_ / "history.sqlite"; }

    std::filesystem::path folder_;
    dao::DBEngine engine_{{Today}};
    dao::Database database_ = engine_.DefaultWorkspace().OpenDatabase(OurPath());
    bench::Peer peer_ = bench::Peer::Reopened(PeersPath());
    bench::Reading ourAnswer_, peersAnswer_;
    bool agreed_ = true;
};

}  // namespace

int main()
{
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "lodrin-bench-scan";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    BuildFile(folder / "history.mdb");
    BuildPeer(folder / "history.sqlite");

    const std::string all = "SELECT * FROM LDHistory";
    const std::string sum = "SELECT COUNT(*) AS Jobs, SUM(Hrs) AS Total FROM LDHistory";
    const std::string ourDay = all + " WHERE EmpID = 17 AND WorkDate = #1/15/2020#";
    const std::string peersDay = all + " WHERE EmpID = 17 AND WorkDate = 43845";
    const std::string newestFirst = " ORDER BY JobStart DESC";
    Race race(folder);
    race.Warm({"one employee's day", ourDay, peersDay});
    race.Warm({"the same, newest first", ourDay + newestFirst, peersDay + newestFirst});
    race.Warm({"count and sum over all", sum, sum, kAll, 7});
    race.Warm({"every field of every row", all, all, kAll, 5});
    race.Opening({"open, first row", all, all, 1});
    race.Opening({"open, one employee's day", ourDay, peersDay});
    race.Opening(
        {"open, one employee's day, newest first", ourDay + newestFirst, peersDay + newestFirst});
    std::filesystem::remove_all(folder);
    return race.Agreed() ? EXIT_SUCCESS : EXIT_FAILURE;
}
