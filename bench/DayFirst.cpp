// SPDX-License-Identifier: Apache-2.0
// DayFirst: what the window asks for one employee, the first time after the file was opened. The
// peer has no index.
#include "bench/AfterOpening.h"
#include "bench/EmployeesDay.h"

namespace {

// The next day in each turn.
template <class Engine>
auto ForADay(bench::Reading (*ask)(Engine&, const bench::Day&), const std::vector<bench::Day>& days)
{
    return [ask, &days, turn = std::size_t{0}](auto& engine) mutable {
        return ask(engine, days[turn++ % days.size()]);
    };
}

int Ask(const bench::BenchShop& shop)
{
    const std::vector<bench::Day> days = bench::SomeDays(shop, 32);
    bench::Races races(shop.size);
    for (const bench::DayQuestion& question : bench::DayQuestions()) {
        const std::string text = std::string(question.name) + ", first after opening";
        races.Run({question.first, text, shop.size == "L" ? 5 : 11},
                  {bench::AfterOpening<bench::OurShop>("Lodrin", shop.Mdb(),
                                                       ForADay(question.ours, days)),
                   bench::AfterOpening<bench::Sqlite>("SQLite, no index", shop.Plain(),
                                                      ForADay(question.sqlites, days), 0.6)});
    }
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
