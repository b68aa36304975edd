// SPDX-License-Identifier: Apache-2.0
#include "bench/Timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace bench {

double Milliseconds(int times, const std::function<void()>& work)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> runs;
    for (int i = 0; i < times; ++i) {
        const Clock::time_point start = Clock::now();
        work();
        runs.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

void Report(std::string_view name, double ours, double peers)
{
    std::printf("%-48s ours %9.3f ms   peer %9.3f ms   ratio %5.2f\n", std::string(name).c_str(),
                ours, peers, ours / peers);
}

}  // namespace bench
