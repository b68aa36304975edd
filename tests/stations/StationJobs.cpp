// SPDX-License-Identifier: Apache-2.0
#include "tests/stations/StationJobs.h"

#include "base/Convert.h"
#include "base/Format.h"
#include "tests/support/OwnMemory.h"
#include "tests/support/ShopWorld.h"

#include <array>
#include <filesystem>
#include <iostream>
#include <random>
#include <set>
#include <utility>

namespace tests {

namespace {

// One program and the employees who use it.
class Clock {
public:
    Clock(const std::string& folder, int machine, int seed)
        : world_(folder, "BAY-" + std::to_string(machine)), dice_(static_cast<unsigned>(seed))
    {
        world_.fakes.prompts.TakeAnyBox();
        world_.On("03/16/2004").At("06:00 AM").Open();
    }

    void IsReadyFor(int seat)
    {
        std::cout << "ready " << seat << " " << Lines(seat) << WhatWasTold() << std::endl;
    }

    // Less than `count`.
    int Any(int count) { return static_cast<int>(dice_() % static_cast<unsigned>(count)); }

    void ItIs(int minute) { world_.At(base::Format(base::Date{minute / 1440.0}, "hh:mm AM/PM")); }

    void ChangesJob(int seat, int firstOrder)
    {
        constexpr std::array<const char*, 6> codes{"BL", "RL", "FL", "ML", "SL", "GL"};
        constexpr std::array<const char*, 3> departments{"Body", "Paint", "Detail"};
        const int order = firstOrder + Any(kOrdersAtATime);
        const char* const code = codes[static_cast<std::size_t>(Any(6))];
        const char* const department = departments[static_cast<std::size_t>(Any(3))];
        Tell(seat, order, [&] { world_.Picks(code, department).Starts(order); });
    }

    void GoesOnBreak(int seat)
    {
        Tell(seat, CurrentOrder(seat), [&] { world_.ConfirmsProgress().GoesOnBreak(); });
    }

    void EndsDay(int seat)
    {
        Tell(seat, CurrentOrder(seat), [&] { world_.IsSure().ConfirmsProgress().EndsDay(); });
    }

private:
    template <typename Act>
    void Tell(int seat, int order, const Act& act)
    {
        world_.Select(NameOfSeat(seat));
        std::cout << "to " << seat << " " << order << std::endl;
        act();
        std::cout << "done " << seat << " " << Lines(seat) << WhatWasTold() << std::endl;
    }

    int Lines(int seat)
    {
        const auto counted = world_.Rows("SELECT Count(*) AS N FROM Labor WHERE EmployeeID = " +
                                         std::to_string(seat));
        return std::stoi(counted.at(0).Text("N"));
    }

    int CurrentOrder(int seat)
    {
        return base::ValLong(world_.Board(NameOfSeat(seat), lodrin::LDEmp::WONumber));
    }

    // The boxes and lines of the log since it was asked before; a question is part of the act.
    std::string WhatWasTold()
    {
        std::string told;
        const std::vector<platform::Box>& boxes = world_.fakes.prompts.boxes;
        for (; boxes_ < boxes.size(); ++boxes_)
            if (boxes[boxes_].buttons == platform::Buttons::Ok)
                told += " told " + boxes[boxes_].text;
        const std::vector<std::string> reports = world_.Reports();
        for (; reports_ < reports.size(); ++reports_)
            told += " told " + reports[reports_];
        return told;
    }

    ShopWorld world_;
    std::mt19937 dice_;
    std::size_t boxes_ = 0, reports_ = 0;  // that were told
};

constexpr int kMinutesOfDay = 24 * 60;

// What one employee does next, and when.
struct Step {
    int minute = 0, seat = 0, done = 0;
    bool operator<(const Step& other) const
    {
        return std::pair(minute, seat) < std::pair(other.minute, other.seat);
    }
};

constexpr int kBegin = 6 * 60;
constexpr int kHours = 10;
constexpr int kBreakAfter = 8;  // steps; he comes back with the next one

// What he does at this minute; when the next step is due, 0 after his last one.
int TakeStep(Clock& clock, const Step& step)
{
    if (step.minute >= kBegin + 60 * kHours - 40) {
        clock.EndsDay(step.seat);
        return 0;
    }
    if (step.done == kBreakAfter)
        clock.GoesOnBreak(step.seat);
    else
        clock.ChangesJob(step.seat, kFirstOrder + kOrdersAtATime * (step.seat / kSeatsOnADozen));
    return step.minute + 20 + clock.Any(20);
}

}  // namespace

int ChangeJobs(const JobsOfSeat& jobs)
{
    Clock clock(jobs.folder, jobs.seat, jobs.seed);
    int minute = kBegin + clock.Any(60);
    clock.IsReadyFor(jobs.seat);
    for (int job = jobs.from; job < jobs.end; ++job) {
        minute = (minute + 2 + clock.Any(20)) % kMinutesOfDay;
        clock.ItIs(minute);
        clock.ChangesJob(jobs.seat, kFirstOrder + kOrdersAtATime * (job / kJobsOnADozen));
    }
    return 0;
}

int WorkTheDay(const DayOfSeats& day)
{
    Clock clock(day.folder, day.first, day.seed);
    std::set<Step> due;
    for (int seat = day.first; seat < day.first + day.count; ++seat) {
        clock.IsReadyFor(seat);
        due.insert({kBegin + clock.Any(30), seat, 0});
    }
    int acts = 0;
    for (int hour = 1; hour <= kHours; ++hour) {
        while (!due.empty() && due.begin()->minute < kBegin + 60 * hour) {
            const Step step = *due.begin();
            due.erase(due.begin());
            clock.ItIs(step.minute);
            const int next = TakeStep(clock, step);
            if (next != 0) due.insert({next, step.seat, step.done + 1});
            ++acts;
        }
        // What this process alone has: neither its code nor what it shares.
        const long memory = OwnMemory("RssAnon");
        const auto file = std::filesystem::file_size(day.folder + "/Kelvaro.mdb") / 1024;
        std::cout << "hour " << hour << " " << acts << " " << memory << " " << file << std::endl;
    }
    return 0;
}

}  // namespace tests
