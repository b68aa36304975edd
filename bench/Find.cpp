// SPDX-License-Identifier: Apache-2.0
// Find: FindFirst on a record set, by a number that has an index in the file and by one that has
// none.
#include "bench/Race.h"
#include "bench/Sqlite.h"

namespace {

constexpr int kTogether = 5;  // searches in one turn

using bench::Reading;

// Numbers from all over a table, read from the peer's file.
std::vector<std::int64_t> SomeNumbers(const bench::Sqlite& database, const std::string& field,
                                      const std::string& from)
{
    const std::string all = "FROM " + from;
    bench::SqliteStatement count = database.Prepare("SELECT COUNT(*) " + all);
    count.Step();
    bench::SqliteStatement one =
        database.Prepare("SELECT " + field + " " + all + " LIMIT 1 OFFSET ?");
    std::vector<std::int64_t> numbers;
    constexpr std::int64_t kStride = 611953;  // a prime, so that the places differ
    for (std::int64_t i = 1; i <= 100; ++i) {
        one.Bind({i * kStride % count.Whole(0)});
        if (one.Step()) numbers.push_back(one.Whole(0));
    }
    return numbers;
}

// The keys of the rows found for so many of the numbers, the next ones in each turn.
template <class Search>
bench::Contender Searching(const std::string& name, const std::vector<std::int64_t>& numbers,
                           int together, Search search)
{
    const auto some = [&numbers, together, search, turn = std::size_t{0}]() mutable {
        Reading found;
        for (int i = 0; i < together; ++i) {
            const std::int64_t key = search(numbers[turn++ % numbers.size()]);
            found.rows += key != 0 ? 1 : 0;
            found.AddNumber(static_cast<double>(key));
        }
        return found;
    };
    return {.name = name, .work = some};
}

// By FindFirst. The first field of the set is its key.
auto Ours(dao::Recordset& rows, const std::string& field)
{
    return [&rows, field](std::int64_t number) -> std::int64_t {
        rows.FindFirst(field + " = " + std::to_string(number));
        const base::Value key = rows.NoMatch() ? base::Value() : rows[0].Value();
        return key.IsNull() ? 0 : *key.As<std::int32_t>();
    };
}

auto Sqlites(bench::SqliteStatement& find)
{
    return [&find](std::int64_t number) -> std::int64_t {
        find.Bind({number});
        const std::int64_t key = find.Step() ? find.Whole(0) : 0;
        find.Reset();
        return key;
    };
}

int Ask(const bench::BenchShop& shop)
{
    bench::OurShop ours(shop.Mdb());
    const bench::Sqlite plain(shop.Plain());
    const bench::Sqlite indexed(shop.Indexed());
    bench::Races races(shop.size);

    const std::string listed = "WOType In('WorkOrder', 'Estimate') AND Archived = FALSE";
    const std::vector<std::int64_t> orders =
        SomeNumbers(indexed, "WorkOrderNumber", "WorkOrder WHERE WorkOrderNumber > 0");
    dao::Recordset allOrders = ours.Database().OpenRecordset("SELECT * FROM WorkOrder");
    bench::SqliteStatement byIndex =
        indexed.Prepare("SELECT * FROM WorkOrder WHERE WorkOrderNumber = ?");
    bench::Contender peer = Searching("SQLite, index", orders, kTogether, Sqlites(byIndex));
    peer.target = 1.5;
    races.Run({'h', "FindFirst by an indexed number, all repair orders", 9, kTogether},
              {Searching("Lodrin", orders, kTogether, Ours(allOrders, "WorkOrderNumber")), peer});

    const std::vector<std::int64_t> open =
        SomeNumbers(indexed, "WorkOrderNumber", "WorkOrder WHERE " + listed);
    dao::Recordset openOrders = ours.Database().OpenRecordset("SELECT * FROM WorkOrder WHERE " +
                                                              listed + " ORDER BY WorkOrderNumber");
    bench::SqliteStatement openByIndex =
        indexed.Prepare("SELECT * FROM WorkOrder WHERE WorkOrderNumber = ? AND +" + listed);
    peer = Searching("SQLite, index", open, kTogether, Sqlites(openByIndex));
    peer.target = 1.5;
    races.Run({'h', "FindFirst by an indexed number, open repair orders", 9, kTogether},
              {Searching("Lodrin", open, kTogether, Ours(openOrders, "WorkOrderNumber")), peer});

    const std::vector<std::int64_t> jobs = SomeNumbers(plain, "WONumb", "LDHistory");
    dao::Recordset history = ours.Database().OpenRecordset("SELECT * FROM LDHistory");
    bench::SqliteStatement scan = plain.Prepare("SELECT * FROM LDHistory WHERE WONumb = ? LIMIT 1");
    peer = Searching("SQLite, no index", jobs, kTogether, Sqlites(scan));
    peer.target = 0.5;
    races.Run({'h', "FindFirst by a number without an index, all jobs", 9, kTogether},
              {Searching("Lodrin", jobs, kTogether, Ours(history, "WONumb")), peer});
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
