// SPDX-License-Identifier: Apache-2.0
// DayLater: what the window asks for one employee, every later time, also right after a job was
// added here or by another program. The peer has an index on employee and day.
#include "bench/EmployeesDay.h"
#include "bench/OtherStation.h"
#include "bench/Race.h"

namespace {

constexpr double kTarget = 2;

using bench::Contender;
using bench::Day;
using bench::Reading;

// Both engines on copies of their files, and who else adds to them.
class Desk {
public:
    explicit Desk(const bench::BenchShop& shop)
        : races(shop.size), large_(shop.size == "L"), days_(bench::SomeDays(shop, 64)),
          ourCopy_(shop.Mdb()), sqliteCopy_(shop.Indexed()),
          other_(ourCopy_.Path(), sqliteCopy_.Path()), ours_(ourCopy_.Path()),
          sqlite_(sqliteCopy_.Path()), history_(ours_.Database().OpenRecordset("LDHistory")),
          insert_(sqlite_.Prepare(bench::kSqliteAddJob))
    {
    }

    void Ask(const bench::DayQuestion& question)
    {
        const std::string name = question.name;
        const int together = large_ ? 2 : question.together;
        const int turns = large_ ? 7 : 25;
        const auto ours = [&](const Day& day) { return question.ours(ours_, day); };
        const auto sqlites = [&](const Day& day) { return question.sqlites(sqlite_, day); };
        std::vector<Contender> warm = {Asked("Lodrin", together, ours),
                                       Asked("SQLite, index", together, sqlites)};
        warm[1].target = kTarget;
        if (question.ours == bench::DayQuestions().back().ours) {
            const auto shorter = [&](const Day& day) {
                return bench::LastTenByNumber(sqlite_, day);
            };
            warm.push_back(Asked("SQLite, ORDER BY ID DESC LIMIT 10", together, shorter));
        }
        races.Run({question.later, name + ", later", 9, together}, warm);

        races.Run({question.later, name + ", after a job added here", turns},
                  {After("Lodrin", ours,
                         [this](const Day& day, int job) { bench::AddJob(history_, day, job); }),
                   After("SQLite, index", sqlites,
                         [this](const Day& day, int job) { bench::AddJob(insert_, day, job); })});
        races.Run(
            {question.later, name + ", after another program added a job", turns},
            {After("Lodrin", ours, [this](const Day& day, int job) { other_.AddToOurs(day, job); }),
             After("SQLite, index", sqlites,
                   [this](const Day& day, int job) { other_.AddToSqlite(day, job); })});
    }

    bench::Races races;

private:
    template <class Question>
    Contender Asked(const std::string& name, int together, Question ask)
    {
        const auto some = [this, together, ask, turn = std::size_t{0}]() mutable {
            Reading all;
            for (int i = 0; i < together; ++i) {
                const Reading one = ask(days_[turn++ % days_.size()]);
                all.rows += one.rows;
                all.AddNumber(one.sum);
            }
            return all;
        };
        return {.name = name, .work = some};
    }

    // Asks for the day of the job that was added just before.
    template <class Question, class Add>
    Contender After(const std::string& name, Question ask, Add add)
    {
        const auto turn = std::make_shared<std::size_t>(0);
        const auto day = [this, turn] { return days_[*turn % days_.size()]; };
        const auto addFirst = [turn, day, add] {
            ++*turn;
            add(day(), static_cast<int>(*turn));
        };
        Contender contender{.name = name, .work = [ask, day] { return ask(day()); }};
        contender.prepare = addFirst;
        if (name != "Lodrin") contender.target = kTarget;
        return contender;
    }

    bool large_;
    std::vector<Day> days_;
    bench::WorkingCopy ourCopy_, sqliteCopy_;
    bench::OtherStation other_;
    bench::OurShop ours_;
    bench::Sqlite sqlite_;
    dao::Recordset history_;
    bench::SqliteStatement insert_;
};

int Ask(const bench::BenchShop& shop)
{
    Desk desk(shop);
    for (const bench::DayQuestion& question : bench::DayQuestions())
        desk.Ask(question);
    return desk.races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
