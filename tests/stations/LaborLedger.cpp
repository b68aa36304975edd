// SPDX-License-Identifier: Apache-2.0
#include "tests/stations/LaborLedger.h"

#include "base/Convert.h"
#include "data/Tables.h"
#include "tests/support/ShopWorld.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <utility>

namespace tests {

namespace {

using lodrin::Labor;
using lodrin::WorkOrder;

constexpr int kToldShown = 5;
constexpr double kRate = 20;  // of each employee an hour

struct Category {
    const char *code, *work;
};
constexpr std::array<Category, 6> kCategories{{{"BL", "Body"},
                                               {"RL", "Refinish"},
                                               {"FL", "Frame"},
                                               {"ML", "Mech"},
                                               {"SL", "Struct"},
                                               {"GL", "Glass"}}};

// In hundredths, so that sums are exact.
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

// What the labor lines of one order and category come to.
struct Posted {
    int sum = 0;
    std::vector<int> doubtful;
};

}  // namespace

bool LaborLedger::Take(const std::string& line)
{
    std::istringstream words(line);
    std::string word;
    int seat = 0, number = 0;
    words >> word >> seat >> number;
    if (word == "to") {
        seats_[seat].order = number;
        return false;
    }
    const bool told = line.find(" told ") != std::string::npos;
    if (told && ++told_ <= kToldShown) std::cout << line << "\n";
    EXPECT_TRUE(word == "done" || word == "ready") << line;
    // What a program finds at its start was made by one that was killed.
    Know(seats_[seat], number, told || word == "ready");
    return word == "done";
}

void LaborLedger::Know(Seat& seat, int lines, bool doubtful)
{
    EXPECT_GE(lines, static_cast<int>(seat.lines.size())) << "a labor line is gone";
    while (static_cast<int>(seat.lines.size()) < lines)
        seat.lines.push_back({seat.order, doubtful});
}

LaborLedger::Posting LaborLedger::PostingOf(int seat, std::size_t line) const
{
    const auto found = seats_.find(seat);
    if (found == seats_.end()) return {};
    const std::vector<Posting>& lines = found->second.lines;
    // The last act of a program that was killed and not started again.
    return line < lines.size() ? lines[line] : Posting{found->second.order, true};
}

int LaborLedger::ExpectEveryHourOnItsOrder(ShopWorld& world)
{
    std::map<std::pair<std::string, std::string>, Posted> posted;  // of order and category
    std::map<int, std::size_t> linesOf;
    for (const Record& line : world.LaborLines()) {
        const int seat = base::ValLong(line[Labor::EmployeeID]);
        const Posting posting = PostingOf(seat, linesOf[seat]++);
        Posted& all = posted[{std::to_string(posting.order), line.Text(Labor::GLType)}];
        const int hours = Hundredths(line[Labor::HrsFlagged]);
        all.sum += hours;
        if (posting.doubtful) all.doubtful.push_back(hours);
    }
    int missing = 0;
    for (const Record& order : world.Rows("SELECT * FROM WorkOrder")) {
        const std::string number = order.Text(WorkOrder::WorkOrderNumber);
        for (const Category& category : kCategories) {
            const int hours = Hundredths(order[std::string(category.work) + "Worked"]);
            const Posted& all = posted[{number, category.code}];
            EXPECT_NEAR(base::Val(order[std::string(category.work) + "Cost"]), kRate * hours / 100,
                        0.001)
                << number << category.code;
            EXPECT_TRUE(SomeAddUpTo(all.sum - hours, all.doubtful))
                << number << category.code << ": lines " << all.sum << ", totals " << hours;
            missing += all.sum - hours;
            posted.erase({number, category.code});
        }
    }
    for (const auto& [where, what] : posted)
        ADD_FAILURE() << "hours on no order: " << where.first << where.second;
    return missing;
}

}  // namespace tests
