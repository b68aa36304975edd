// SPDX-License-Identifier: Apache-2.0
#include "tests/stations/LaborLedger.h"

#include "base/Convert.h"
#include "base/NumberedError.h"
#include "data/Tables.h"
#include "tests/support/ShopWorld.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <iostream>
#include <regex>
#include <sstream>
#include <utility>

namespace tests {

namespace {

using lodrin::Labor;
using lodrin::WorkOrder;

constexpr int kToldShown = 5;

// The errors of which the program tells in a box that another has something locked.
constexpr std::array<int, 9> kLocks{3046, 3158, 3186, 3187, 3188, 3189, 3218, 3260, 3262};
// The error of a row that others changed again and again, as a line of the log begins.
constexpr const char* kChangedByOthers = "3197 ";

// Whether a box says, with whatever names and time, or a line of the log, that others were in the
// way.
bool IsConflict(const std::string& told)
{
    const auto tells = [&](int lock) {
        const std::string name = "[^']+";
        return std::regex_match(told,
                                std::regex(base::ErrorText(lock, {name, name, name}) + "'.*"));
    };
    return told.starts_with(kChangedByOthers) || std::any_of(kLocks.begin(), kLocks.end(), tells);
}

// What stands behind each " told " of a line.
std::vector<std::string> ToldIn(const std::string& line)
{
    constexpr std::string_view mark = " told ";
    std::vector<std::string> all;
    for (std::size_t at = line.find(mark); at != std::string::npos;) {
        const std::size_t begin = at + mark.size();
        at = line.find(mark, begin);
        all.push_back(line.substr(begin, at == std::string::npos ? at : at - begin));
    }
    return all;
}

struct Category {
    const char *code, *work;
};
constexpr std::array<Category, 6> kCategories{{{"BL", "Body"},
                                               {"RL", "Refinish"},
                                               {"FL", "Frame"},
                                               {"ML", "Mech"},
                                               {"SL", "Struct"},
                                               {"GL", "Glass"}}};

int Hundredths(double number)
{
    return static_cast<int>(std::lround(100 * number));
}

// Hours and what they cost, in hundredths, so that sums are exact.
struct Amount {
    int hours = 0, cost = 0;

    friend bool operator==(const Amount&, const Amount&) = default;
    friend Amount operator+(Amount a, Amount b) { return {a.hours + b.hours, a.cost + b.cost}; }
    friend Amount operator-(Amount a, Amount b) { return {a.hours - b.hours, a.cost - b.cost}; }
    friend void PrintTo(const Amount& amount, std::ostream* out)
    {
        *out << amount.hours << " for " << amount.cost;
    }
};

Amount AmountOf(const Record& line)
{
    const double hours = base::Val(line[Labor::HrsFlagged]);
    return {Hundredths(hours), Hundredths(hours * base::Val(line[Labor::EmpRate]))};
}

Amount AmountOf(const Record& order, const std::string& work)
{
    return {Hundredths(base::Val(order[work + "Worked"])),
            Hundredths(base::Val(order[work + "Cost"]))};
}

// Whether some of the amounts add up to the sum.
bool SomeAddUpTo(Amount sum, const std::vector<Amount>& amounts, std::size_t from = 0)
{
    if (sum == Amount{}) return true;
    for (std::size_t i = from; i < amounts.size(); ++i)
        if (amounts[i].hours <= sum.hours && SomeAddUpTo(sum - amounts[i], amounts, i + 1))
            return true;
    return false;
}

// What the labor lines of one order and category come to.
struct Posted {
    Amount sum;
    std::vector<Amount> doubtful;
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
    const std::vector<std::string> failures = ToldIn(line);
    for (const std::string& failure : failures)
        EXPECT_TRUE(IsConflict(failure)) << line;
    const bool told = !failures.empty();
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
        const Amount amount = AmountOf(line);
        all.sum = all.sum + amount;
        if (posting.doubtful) all.doubtful.push_back(amount);
    }
    int missing = 0;
    for (const Record& order : world.Rows("SELECT * FROM WorkOrder")) {
        const std::string number = order.Text(WorkOrder::WorkOrderNumber);
        for (const Category& category : kCategories) {
            const Amount totals = AmountOf(order, category.work);
            const Posted& all = posted[{number, category.code}];
            EXPECT_TRUE(SomeAddUpTo(all.sum - totals, all.doubtful))
                << number << category.code << ": lines " << testing::PrintToString(all.sum)
                << ", totals " << testing::PrintToString(totals);
            missing += all.sum.hours - totals.hours;
            posted.erase({number, category.code});
        }
    }
    for (const auto& [where, what] : posted)
        ADD_FAILURE() << "hours on no order: " << where.first << where.second;
    return missing;
}

}  // namespace tests
