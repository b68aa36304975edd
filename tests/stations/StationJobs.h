// SPDX-License-Identifier: Apache-2.0
// StationJobs: a program at which employees change jobs, and tells of each act before and after it.
//
//     to SEAT ORDER          the labor of the act that begins goes to this repair order
//     done SEAT LINES        it is over; so many labor lines the seat has now
//     ready SEAT LINES       of each seat, before the first act
//     hour H ACTS MEMORY FILE  an hour of the shop is over: acts until now; kilobytes of its own
//                            memory and of the file
//
// Behind `done` and `ready` stands of each failure since the line before " told " and the text of
// the box, or number and location as the log has them.
#pragma once

#include <string>

namespace tests {

// Of the orders from the first one on a dozen are worked on at a time.
inline constexpr int kFirstOrder = 1001;
inline constexpr int kOrdersAtATime = 12;
// The most seats that share a dozen in a day.
inline constexpr int kSeatsOnADozen = 10;
// After so many jobs of a seat the next dozen is taken, so that no order's notes grow without end.
inline constexpr int kJobsOnADozen = 100;

inline std::string NameOfSeat(int seat)
{
    return "Tech" + std::to_string(seat) + ", A";
}

// The jobs numbered `from` to `end` (without it) of one employee, one after the other.
struct JobsOfSeat {
    std::string folder;
    int seat = 0, from = 0, end = 0;
    int seed = 0;
};
int ChangeJobs(const JobsOfSeat& jobs);

// The whole day of some employees, from six in the morning: begin, a job every half hour, a break,
// end of the day before four.
struct DayOfSeats {
    std::string folder;
    int first = 0, count = 0;
    int seed = 0;
};
int WorkTheDay(const DayOfSeats& day);

}  // namespace tests
