// SPDX-License-Identifier: Apache-2.0
// Race: one question asked of several contenders in turn, and the lines that tell how it went.
#pragma once

#include "bench/Reading.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// What of a contender's answer is compared with ours.
enum class Compared { Whole, Rows, Nothing };

// Who answers, and how often the work answers the question in one turn.
struct Contender {
    std::string name;
    std::function<Reading()> work;
    // How long ours may take at most, as a share of this one's time.
    std::optional<double> target = {};
    // Made ready before each turn; not timed.
    std::function<void()> prepare = {};
    Compared compared = Compared::Whole;
};

struct Question {
    char letter = '?';
    std::string text;
    int turns = 9;
    int timesATurn = 1;  // answers one turn of a contender gives
};

struct Figure {
    double ours = 0, limit = 0;
    std::string unit;  // behind the number
    std::string peer = {};
    double peers = 0;
};

// The lines of one program's table.
//
//     Races races("M");
//     races.Run({'a', "open to the first row", 15}, {{"Lodrin", ours}, {"SQLite", sqlites, 1.5}});
//     return races.ExitCode();
//
// Rule: the contenders take turns, ours first, so that all meet the same load of the machine; one
//       turn of each goes before and does not count. A figure is the middle of the turns; the ratio
//       is the middle of the ratios of the single turns. An answer that differs from ours is
//       printed and fails the program; a missed target is printed only.
class Races {
public:
    explicit Races(std::string size) : size_(std::move(size)) {}

    // Ours is the first of the contenders.
    void Run(const Question& question, const std::vector<Contender>& contenders);
    // One figure of ours, the peer's if it has one, and the limit of ours.
    void Report(const Question& question, const Figure& figure);
    // Prints what is wrong and fails the program.
    void Fail(const std::string& what);

    [[nodiscard]] int ExitCode() const { return failed_ ? 1 : 0; }

private:
    void Check(const Question& question, const Contender& other, const Reading& ours,
               const Reading& theirs);

    std::string size_;
    bool failed_ = false;
};

}  // namespace bench
