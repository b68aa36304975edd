// SPDX-License-Identifier: Apache-2.0
// LaborLedger: to which repair order each labor line's hours must have gone, kept beside the file
// from what the stations say (StationJobs.h).
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tests {

class ShopWorld;

class LaborLedger {
public:
    // Takes a line that a station printed; true when an act is over by it. Another line than
    // StationJobs.h tells of fails the test, and so does a failure that is no conflict with
    // another station: what a lock is told by, or 3197 in the log.
    bool Take(const std::string& line);

    // How many acts told that something failed.
    [[nodiscard]] int Told() const { return told_; }

    // Expects that the hours and costs of each repair order are those of its labor lines, but for
    // lines whose program was killed before it said it was done, or told that something failed.
    // Returns what such lines lack. Units: hundredths of hours.
    [[nodiscard]] int ExpectEveryHourOnItsOrder(ShopWorld& world);

private:
    struct Posting {
        int order = 0;
        bool doubtful = false;
    };
    struct Seat {
        int order = 0;  // of the last act that began
        std::vector<Posting> lines;
    };
    // Lines that are there and not yet known come from the act that began last.
    static void Know(Seat& seat, int lines, bool doubtful);
    [[nodiscard]] Posting PostingOf(int seat, std::size_t line) const;

    std::map<int, Seat> seats_;
    int told_ = 0;
};

}  // namespace tests
