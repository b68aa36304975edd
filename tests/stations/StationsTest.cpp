// SPDX-License-Identifier: Apache-2.0
// Eight programs change jobs in one file, are killed and started again; every figure is accounted
// for. LODRIN_JOBS sets how many job changes there are in all.
#include "base/Convert.h"
#include "data/Tables.h"
#include "jet/io/StdFile.h"
#include "tests/stations/Process.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopWorld.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
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
constexpr int kOrders = 12;

int JobsInAll()
{
    const char* const wish = std::getenv("LODRIN_JOBS");
    return wish == nullptr ? 240 : std::atoi(wish);
}

class StationsTest : public testing::Test {
protected:
    StationsTest()
    {
        ShopWorld world(folder.Path());
        world.MakeDatabase();
        for (int seat = 1; seat <= kStations; ++seat)
            world.Given({Employee("Tech" + std::to_string(seat) + ", A", seat)});
        for (int order = 1001; order < 1001 + kOrders; ++order)
            world.Given({RepairOrder(order)});
    }

    // What holds of the file whatever was done to it.
    void ExpectSoundFile()
    {
        jet::io::StdFileSystem files;
        EXPECT_CLEAN(files, file.string());
        EXPECT_FALSE(std::filesystem::exists(folder.Path() / "Kelvaro.ldb"));
        EXPECT_FALSE(std::filesystem::exists(file.string() + ".journal"));
    }

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

    ScratchFolder folder;
    std::filesystem::path file = folder.Path() / "Kelvaro.mdb";
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

// One seat at the clock: its program, and what is known of it.
struct Seat {
    std::optional<Process> program;
    int number = 0;
    int left = 0;     // jobs still to be changed
    int counted = 0;  // labor lines that its program reported
};

// A labor line whose totals may be missing, because its program was killed, or said so.
struct Doubtful {
    int seat = 0;
    int line = 0;  // of the seat's labor lines, from 0
};

class KilledStationsTest : public StationsTest {
protected:
    void Start(Seat& seat)
    {
        seat.program = Station({"jobs", folder.Path().string(), std::to_string(seat.number),
                                std::to_string(seat.left), std::to_string(++seed)});
        ASSERT_EQ(seat.program->Line(), "ready");
    }

    // Reads what a station says: "done 7", "done 7 told".
    void Note(Seat& seat, const std::string& line)
    {
        ASSERT_EQ(line.rfind("done ", 0), 0U) << line;
        const int now = std::atoi(line.c_str() + 5);
        if (line.find("told") != std::string::npos) {
            ++told;
            if (told < 5) std::cout << line << "\n";
            Doubt(seat, now);
        }
        seat.counted = now;
        --seat.left;
    }

    // The lines from the last counted one on.
    void Doubt(const Seat& seat, int end)
    {
        for (int line = seat.counted; line < end; ++line)
            doubtful.push_back({seat.number, line});
    }

    // Lets it work on a little, then kills it in the midst.
    void Kill(Seat& seat)
    {
        std::this_thread::sleep_for(std::chrono::microseconds(dice() % 30000));
        seat.program->Kill();
        for (std::string line = seat.program->Line(); !line.empty(); line = seat.program->Line())
            Note(seat, line);
        // One more line at most, and one more job.
        Doubt(seat, seat.counted + 1);
        ++kills;
    }

    void WorkAndKill(std::vector<Seat>& seats, int killsWanted)
    {
        for (std::size_t turn = 0;; ++turn) {
            Seat& seat = seats[turn % seats.size()];
            if (seat.left <= 0) {
                const auto more = [](const Seat& each) { return each.left > 0; };
                if (std::none_of(seats.begin(), seats.end(), more)) return;
                continue;
            }
            const std::string line = seat.program->Line();
            ASSERT_NE(line, "") << "a station ended: " << seat.program->Wait();
            Note(seat, line);
            if (HasFatalFailure()) return;
            if (seat.left <= 0 || kills >= killsWanted || dice() % 8 != 0) continue;
            Kill(seat);
            if (seat.left > 0) Start(seat);
            if (HasFatalFailure()) return;
        }
    }

    std::mt19937 dice{20040315};
    int seed = 0, kills = 0, told = 0;
    std::vector<Doubtful> doubtful;
};

struct Category {
    const char *code, *work;
};
constexpr std::array<Category, 6> kCategories{{{"BL", "Body"},
                                               {"RL", "Refinish"},
                                               {"FL", "Frame"},
                                               {"ML", "Mech"},
                                               {"SL", "Struct"},
                                               {"GL", "Glass"}}};

// Hours, in hundredths, so that sums are exact.
int Hundredths(const base::Value& hours)
{
    return static_cast<int>(std::lround(100 * base::Val(hours)));
}

// Whether some of the amounts add up to the sum.
bool SomeAddUpTo(int sum, const std::vector<int>& amounts, std::size_t from = 0)
{
    if (sum == 0) return true;
    for (std::size_t i = from; i < amounts.size(); ++i)
        if (amounts[i] <= sum && SomeAddUpTo(sum - amounts[i], amounts, i + 1)) return true;
    return false;
}

// What a repair order's labor lines say of one category.
struct Posted {
    int sum = 0;
    std::vector<int> doubtful;
};

TEST_F(KilledStationsTest, EveryHourIsAccountedFor)
{
    const int jobs = JobsInAll();
    const int killsWanted = std::max(8, jobs / 24);
    const auto begin = std::chrono::steady_clock::now();
    Process watcher = Station({"watch", folder.Path().string()});
    ASSERT_EQ(watcher.Line(), "ready");
    std::vector<Seat> seats(kStations);
    for (int i = 0; i < kStations; ++i) {
        seats[static_cast<std::size_t>(i)].number = i + 1;
        seats[static_cast<std::size_t>(i)].left = std::max(1, jobs / kStations);
        Start(seats[static_cast<std::size_t>(i)]);
    }
    WorkAndKill(seats, killsWanted);
    ASSERT_FALSE(HasFatalFailure());
    for (Seat& seat : seats)
        if (seat.program) seat.program->Wait();
    const std::ofstream closing(folder.Path() / "closing");
    std::string reads;
    for (std::string line = watcher.Line(); !line.empty(); line = watcher.Line()) {
        EXPECT_EQ(line.rfind("torn", 0), std::string::npos) << line;
        reads = line;
    }
    EXPECT_EQ(watcher.Wait(), 0) << reads;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;

    // Every hour of a labor line is in its repair order's totals, but for lines whose program was
    // killed between the two, or told that it could not.
    ShopWorld world(folder.Path());
    const auto lines = world.LaborLines();
    std::map<std::pair<std::string, std::string>, Posted> posted;
    std::map<std::string, int> linesOf;
    for (const Record& line : lines) {
        // Closed jobs go to the order chosen next; the line names the order of the job itself.
        const int seat = std::atoi(line.Text(Labor::EmployeeID).c_str());
        const int number = linesOf[line.Text(Labor::EmployeeID)]++;
        Posted& all = posted[{"all", line.Text(Labor::GLType)}];
        const int hours = Hundredths(line[Labor::HrsFlagged]);
        all.sum += hours;
        const auto same = [&](const Doubtful& each) {
            return each.seat == seat && each.line == number;
        };
        if (std::any_of(doubtful.begin(), doubtful.end(), same)) all.doubtful.push_back(hours);
    }
    int missing = 0;
    for (const Category& category : kCategories) {
        int hours = 0;
        double cost = 0;
        for (int order = 1001; order < 1001 + kOrders; ++order) {
            const Record stored = world.Order(order);
            hours += Hundredths(stored[std::string(category.work) + "Worked"]);
            cost += base::Val(stored[std::string(category.work) + "Cost"]);
        }
        const Posted& all = posted[{"all", category.code}];
        EXPECT_NEAR(cost, 20 * hours / 100.0, 0.001) << category.code;
        EXPECT_TRUE(SomeAddUpTo(all.sum - hours, all.doubtful))
            << category.code << ": lines " << all.sum << ", totals " << hours;
        missing += all.sum - hours;
    }
    // A killed program may have used up a number for each of the two counters.
    const auto history = world.Jobs();
    EXPECT_LE(MissingNumbers(lines, "LaborID"), kills + told);
    EXPECT_LE(MissingNumbers(history, "ID"), kills + told);
    EXPECT_GT(lines.size(), static_cast<std::size_t>(jobs) / 2);
    std::cout << "jobs " << jobs << ", kills " << kills << ", told " << told << ", labor lines "
              << lines.size() << ", hundredths of hours not in totals " << missing << ", " << reads
              << ", seconds " << took.count() << "\n";
    ExpectSoundFile();
    if (!MdbExportIsInstalled()) return;
    const auto exported = MdbExport(file, "Labor");
    ASSERT_EQ(exported.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(exported[i].at("LaborID"), lines[i].Text("LaborID"));
}

}  // namespace
