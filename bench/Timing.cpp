// SPDX-License-Identifier: Apache-2.0
#include "bench/Timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace bench {

namespace {

double Once(const std::function<void()>& work)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Middle(std::vector<double> runs)
{
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

}  // namespace

double Milliseconds(int times, const std::function<void()>& work)
{
    std::vector<double> runs;
    for (int i = 0; i < times; ++i)
        runs.push_back(Once(work));
    return Middle(std::move(runs));
}

Times InTurn(int times, const std::function<void()>& ours, const std::function<void()>& peers)
{
    std::vector<double> ourRuns;
    std::vector<double> peersRuns;
    for (int i = 0; i < times; ++i) {
        ourRuns.push_back(Once(ours));
        peersRuns.push_back(Once(peers));
    }
    return {Middle(std::move(ourRuns)), Middle(std::move(peersRuns))};
}

void Report(std::string_view name, double ours, double peers)
{
    std::printf("%-48s ours %9.3f ms   peer %9.3f ms   ratio %5.2f\n", std::string(name).c_str(),
                ours, peers, ours / peers);
}

}  // namespace bench
