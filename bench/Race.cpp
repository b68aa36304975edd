// SPDX-License-Identifier: Apache-2.0
#include "bench/Race.h"

#include "bench/Stopwatch.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench {

namespace {

double Middle(std::vector<double> runs)
{
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

// Of one turn. Units: milliseconds.
double Timed(const Contender& contender, Reading& answer)
{
    if (contender.prepare) contender.prepare();
    const Stopwatch stopwatch;
    answer = contender.work();
    return stopwatch.Milliseconds();
}

// Three digits that count.
std::string Short(double number)
{
    std::array<char, 32> text{};
    const int places = number >= 100 ? 0 : number >= 10 ? 1 : number >= 1 ? 2 : 3;
    if (number < 0.1)
        std::snprintf(text.data(), text.size(), "%.2g", number);
    else
        std::snprintf(text.data(), text.size(), "%.*f", places, number);
    return text.data();
}

std::string Verdict(double ratio, std::optional<double> target)
{
    if (!target) return "| |";
    return "| " + Short(*target) + " | " + (ratio <= *target ? "yes" : "**no**");
}

void PrintRow(const Question& question, const std::string& size, const std::string& rest)
{
    std::printf("| %c | %s | %s | %d | %s |\n", question.letter, size.c_str(),
                question.text.c_str(), question.turns, rest.c_str());
    std::fflush(stdout);
}

// The figures of all turns of one contender.
using Turns = std::vector<double>;

double MiddleRatio(const Turns& ours, const Turns& theirs)
{
    Turns ratios;
    for (std::size_t turn = 0; turn < ours.size(); ++turn)
        ratios.push_back(ours[turn] / theirs[turn]);
    return Middle(std::move(ratios));
}

}  // namespace

void Races::Run(const Question& question, const std::vector<Contender>& contenders)
{
    std::vector<Turns> turns(contenders.size());
    for (int turn = -1; turn < question.turns; ++turn) {
        std::vector<Reading> answers(contenders.size());
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            const double time = Timed(contenders[i], answers[i]);
            if (turn >= 0) turns[i].push_back(time / question.timesATurn);
            Check(question, contenders[i], answers[0], answers[i]);
        }
    }
    for (std::size_t i = 1; i < contenders.size(); ++i) {
        const double ratio = MiddleRatio(turns[0], turns[i]);
        PrintRow(question, size_,
                 Short(Middle(turns[0])) + " ms | " + contenders[i].name + " | " +
                     Short(Middle(turns[i])) + " ms | " + Short(ratio) + " " +
                     Verdict(ratio, contenders[i].target));
    }
}

void Races::Report(const Question& question, const Figure& figure)
{
    const auto shown = [&figure](double number) { return Short(number) + figure.unit; };
    PrintRow(question, size_,
             shown(figure.ours) + " | " + figure.peer + " | " +
                 (figure.peer.empty() ? "" : shown(figure.peers)) + " | " + shown(figure.ours) +
                 " | " + shown(figure.limit) + " | " +
                 (figure.ours <= figure.limit ? "yes" : "**no**"));
}

void Races::Fail(const std::string& what)
{
    std::printf("FAILED: %s\n", what.c_str());
    failed_ = true;
}

void Races::Check(const Question& question, const Contender& other, const Reading& ours,
                  const Reading& theirs)
{
    const bool agreed =
        other.compared == Compared::Nothing ||
        (other.compared == Compared::Rows ? ours.rows == theirs.rows : Agree(ours, theirs));
    if (agreed) return;
    Fail("\"" + question.text + "\": we read " + std::to_string(ours.rows) + " rows, sum " +
         std::to_string(ours.sum) + "; " + other.name + " " + std::to_string(theirs.rows) +
         " rows, sum " + std::to_string(theirs.sum));
}

}  // namespace bench
