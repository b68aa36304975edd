// SPDX-License-Identifier: Apache-2.0
// Eight programs change jobs in one file, are killed and started again; every figure is accounted
// for. LODRIN_JOBS sets how many job changes there are in all.
#include "base/Convert.h"
#include "data/Tables.h"
#include "tests/stations/LaborLedger.h"
#include "tests/stations/Station.h"
#include "tests/stations/StationJobs.h"
#include "tests/stations/StationsShop.h"
#include "tests/support/ExpectExport.h"
#include "tests/support/ShopWorld.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <random>
#include <set>
#include <thread>

namespace {

using namespace tests;
using lodrin::Labor;
using lodrin::LDHistory;
using lodrin::WorkOrder;

constexpr int kStations = 8;

int JobsInAll()
{
    const char* const wish = std::getenv("LODRIN_JOBS");
    return wish == nullptr ? 240 : std::atoi(wish);
}

class StationsTest : public StationsShop {
protected:
    StationsTest() { MakeShop(kStations, 1 + JobsInAll() / kStations / kJobsOnADozen); }

    // The numbers that a counter gave out, and how many it used up besides.
    int MissingNumbers(const std::vector<Record>& rows, std::string_view counter)
    {
        std::set<double> numbers;
        for (const Record& row : rows)
            EXPECT_TRUE(numbers.insert(base::Val(row[counter])).second)
                << counter << " " << row.Text(counter) << " twice";
        return numbers.empty()
                   ? 0
                   : static_cast<int>(*numbers.rbegin()) - static_cast<int>(numbers.size());
    }
};

// Each retries what a conflict stopped, so nothing may be missing at all.
TEST_F(StationsTest, WhatEightProgramsAddToOneRowIsAllThere)
{
    constexpr int times = 6;
    std::vector<Process> stations;
    for (int seat = 1; seat <= kStations; ++seat)
        stations.push_back(
            Station({"add", folder.Path().string(), std::to_string(seat), std::to_string(times)}));
    for (Process& station : stations) {
        std::string last;
        for (std::string line = station.Line(); !line.empty(); line = station.Line())
            last = line;
        EXPECT_EQ(last, "done " + std::to_string(times));
        EXPECT_EQ(station.Wait(), 0);
    }
    ShopWorld world(folder.Path());
    EXPECT_EQ(world.Order(1001)[WorkOrder::BodyWorked], base::Value(double{kStations * times}));
    const auto lines = world.LaborLines();
    EXPECT_EQ(lines.size(), std::size_t{kStations * times});
    EXPECT_EQ(MissingNumbers(lines, "LaborID"), 0);
}

// One seat at the clock, and the jobs that it has still to change.
struct Seat {
    std::optional<Process> program;
    int number = 0;
    int job = 0, end = 0;
    [[nodiscard]] bool HasMore() const { return job < end; }
};

class KilledStationsTest : public StationsTest {
protected:
    void Start(Seat& seat)
    {
        seat.program =
            Station({"jobs", folder.Path().string(), std::to_string(seat.number),
                     std::to_string(seat.job), std::to_string(seat.end), std::to_string(++seed)});
        EXPECT_FALSE(ledger.Take(seat.program->Line()));
    }

    void Note(Seat& seat, const std::string& line)
    {
        if (ledger.Take(line)) ++seat.job;
    }

    // Lets it work on a little, then kills it in the midst.
    void Kill(Seat& seat)
    {
        std::this_thread::sleep_for(std::chrono::microseconds(dice() % 30000));
        seat.program->Kill();
        for (std::string line = seat.program->Line(); !line.empty(); line = seat.program->Line())
            Note(seat, line);
        ++kills;
    }

    // Kills about once in so many changes, from the first to the last.
    void WorkAndKill(std::vector<Seat>& seats, unsigned oneIn)
    {
        const auto hasMore = [](const Seat& each) { return each.HasMore(); };
        for (std::size_t turn = 0; std::any_of(seats.begin(), seats.end(), hasMore); ++turn) {
            Seat& seat = seats[turn % seats.size()];
            if (!seat.HasMore()) continue;
            const std::string line = seat.program->Line();
            ASSERT_NE(line, "") << "a station ended: " << seat.program->Wait();
            Note(seat, line);
            if (!seat.HasMore() || dice() % oneIn != 0) continue;
            Kill(seat);
            if (seat.HasMore()) Start(seat);
        }
    }

    std::mt19937 dice{20040315};
    int seed = 0, kills = 0;
    LaborLedger ledger;
};

TEST_F(KilledStationsTest, EveryHourIsAccountedFor)
{
    const int jobs = JobsInAll();
    // So that killing does not become what most of the time goes into.
    const auto oneIn = static_cast<unsigned>(std::max(16, jobs / 400));
    const auto begin = std::chrono::steady_clock::now();
    Process watcher = Station({"watch", folder.Path().string()});
    ASSERT_EQ(watcher.Line(), "ready");
    std::vector<Seat> seats(kStations);
    for (Seat& seat : seats) {
        seat.number = 1 + static_cast<int>(&seat - seats.data());
        seat.end = std::max(1, jobs / kStations);
        Start(seat);
    }
    WorkAndKill(seats, oneIn);
    ASSERT_FALSE(HasFatalFailure());
    EXPECT_GT(kills, 0);
    for (Seat& seat : seats)
        if (seat.program) seat.program->Wait();
    const std::ofstream closing(folder.Path() / "closing");
    std::string reads;
    for (std::string line = watcher.Line(); !line.empty(); line = watcher.Line()) {
        EXPECT_TRUE(line.starts_with("reads ")) << line;
        reads = line;
    }
    EXPECT_EQ(watcher.Wait(), 0) << reads;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;

    ShopWorld world(folder.Path());
    const int missing = ledger.ExpectEveryHourOnItsOrder(world);
    const auto lines = world.LaborLines();
    // A killed program may have used up a number for each of the two counters.
    const auto history = world.Jobs();
    EXPECT_LE(MissingNumbers(lines, "LaborID"), kills + ledger.Told());
    EXPECT_LE(MissingNumbers(history, "ID"), kills + ledger.Told());
    EXPECT_GT(lines.size(), static_cast<std::size_t>(jobs) / 2);
    std::cout << "jobs " << jobs << ", kills " << kills << ", told " << ledger.Told()
              << ", labor lines " << lines.size() << ", hundredths of hours not in totals "
              << missing << ", " << reads << ", seconds " << took.count() << "\n";
    ExpectSoundFile();
    if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed: read by nobody else";
    ExpectReadsTheSame(file, world.Stored());
}

}  // namespace
