// SPDX-License-Identifier: Apache-2.0
// Posting: one closed job posted: a row of the history, a labor line with five indexes, two numbers
// of the repair order; each of the three calls is atomic.
#include "bench/History.h"
#include "bench/LazyDisk.h"
#include "bench/Machine.h"

#include <optional>

namespace {

constexpr const char* kSumOfOrders = "SELECT SUM(BodyWorked) AS Hours FROM WorkOrder";
constexpr const char* kSqliteLabor =
    "INSERT INTO Labor (EmployeeID, WONumber, EmpRate, LastName, FirstName, GLType, FlagDate,"
    " TimeIN, TimeOut, HrsFlagged, HrsActual, WorkOrder, MiscDesc, Paid, PayBatch, Adjusted)"
    " VALUES (?,?,?,?,?,?,?,?,?,?,0,?,?,0,0,0)";
constexpr double kIn = 8.0 / 24, kOut = 9.5 / 24, kHours = 1.5, kCost = 33.75;

// The order that the number-th posting goes to. Units: EntryNumber.
std::int32_t EntryOf(int number, std::int32_t orders)
{
    return static_cast<std::int32_t>(number * 7919LL % orders) + 1;
}

void AddLabor(dao::Recordset& labor, const bench::Day& day, std::int32_t entry)
{
    labor.AddNew();
    labor["EmployeeID"] = day.employee;
    labor["WONumber"] = entry;
    labor["EmpRate"] = base::Currency{225000};
    labor["LastName"] = "Jones";
    labor["FirstName"] = "Anthony";
    labor["GLType"] = "BL";
    labor["FlagDate"] = base::Date{day.date};
    labor["TimeIN"] = base::Date{kIn};
    labor["TimeOut"] = base::Date{kOut};
    labor["HrsFlagged"] = kHours;
    labor["WorkOrder"] = 10000 + entry;
    labor["MiscDesc"] = "2014 Chevrolet Silverado 1500 LT";
    labor.Update();
}

class Ours {
public:
    Ours(const std::string& path, const std::vector<bench::Day>& days, std::int32_t orders)
        : shop_(path), days_(days), orders_(orders)
    {
        Open();
    }
    Ours(const std::string& path, jet::io::FileSystem& files, const std::vector<bench::Day>& days,
         std::int32_t orders)
        : shop_(path, files), days_(days), orders_(orders)
    {
        Open();
    }

    // The repair order is at hand before the job is closed.
    void FindOrder()
    {
        ++number_;
        order_.FindFirst("EntryNumber = " + std::to_string(EntryOf(number_, orders_)));
    }

    bench::Reading Post()
    {
        const bench::Day& day = days_[static_cast<std::size_t>(number_) % days_.size()];
        bench::AddJob(history_, day, number_);
        AddLabor(labor_, day, EntryOf(number_, orders_));
        order_.Edit();
        order_["BodyWorked"] = kHours * number_;
        order_["BodyCost"] = base::Currency{static_cast<std::int64_t>(kCost * 10000)};
        order_.Update();
        return {.rows = 1, .sum = 0};
    }

    [[nodiscard]] bench::Reading Result() { return shop_.Read(kSumOfOrders); }

private:
    void Open()
    {
        history_ = shop_.Database().OpenRecordset("LDHistory");
        labor_ = shop_.Database().OpenRecordset("Labor");
        order_ = shop_.Database().OpenRecordset("SELECT * FROM WorkOrder");
    }

    bench::OurShop shop_;
    const std::vector<bench::Day>& days_;
    std::int32_t orders_;
    int number_ = 0;
    dao::Recordset history_, labor_, order_;
};

class Sqlites {
public:
    Sqlites(const std::string& path, const std::string& synchronous,
            const std::vector<bench::Day>& days, std::int32_t orders)
        : database_(path), days_(days), orders_(orders)
    {
        // Ours has no index on the history either.
        database_.Run("DROP INDEX HistoryDay; PRAGMA journal_mode = DELETE; PRAGMA synchronous = " +
                      synchronous);
        job_.emplace(database_.Prepare(bench::kSqliteAddJob));
        labor_.emplace(database_.Prepare(kSqliteLabor));
        order_.emplace(database_.Prepare(
            "UPDATE WorkOrder SET BodyWorked = ?, BodyCost = ? WHERE EntryNumber = ?"));
    }

    bench::Reading Post()
    {
        ++number_;
        const bench::Day& day = days_[static_cast<std::size_t>(number_) % days_.size()];
        const std::int64_t entry = EntryOf(number_, orders_);
        bench::AddJob(*job_, day, number_);
        labor_->Run({std::int64_t{day.employee}, entry, 22.5, "Jones", "Anthony", "BL", day.date,
                     kIn, kOut, kHours, std::int64_t{10000 + entry},
                     "2014 Chevrolet Silverado 1500 LT"});
        order_->Run({kHours * number_, kCost, entry});
        return {.rows = 1, .sum = 0};
    }

    [[nodiscard]] bench::Reading Result() const { return database_.Read(kSumOfOrders); }

private:
    bench::Sqlite database_;
    const std::vector<bench::Day>& days_;
    std::int32_t orders_;
    int number_ = 0;
    std::optional<bench::SqliteStatement> job_, labor_, order_;
};

// Both have the same hours on all orders.
void CheckResult(bench::Races& races, Ours& ours, const Sqlites& sqlites)
{
    if (!bench::Agree(ours.Result(), sqlites.Result()))
        races.Fail("after posting the orders hold different hours");
}

int Ask(const bench::BenchShop& shop)
{
    const std::vector<bench::Day> days = bench::SomeDays(shop, 64);
    // The last entries may have been taken out again.
    const bench::Sqlite counting(shop.Plain());
    bench::SqliteStatement count = counting.Prepare("SELECT MAX(EntryNumber) FROM WorkOrder");
    count.Step();
    const auto orders = static_cast<std::int32_t>(count.Whole(0));
    bench::Races races(shop.size);
    {
        const bench::WorkingCopy mdb(shop.Mdb());
        const bench::WorkingCopy sqlite(shop.Indexed());
        const bench::ScratchPages pages(mdb.Folder());
        Ours ours(mdb.Path(), days, orders);
        Sqlites sqlites(sqlite.Path(), "FULL", days, orders);
        races.Run({'i', "one posting, safe against a power cut", 40},
                  {{.name = "Lodrin",
                    .work = [&] { return ours.Post(); },
                    .prepare = [&] { ours.FindOrder(); }},
                   {"SQLite, journal, FULL", [&] { return sqlites.Post(); }, 1.0},
                   pages.OneWrite(),
                   pages.OneFlush()});
        CheckResult(races, ours, sqlites);
    }
    const bench::WorkingCopy mdb(shop.Mdb());
    const bench::WorkingCopy sqlite(shop.Indexed());
    bench::LazyDisk lazy;
    Ours ours(mdb.Path(), lazy, days, orders);
    Sqlites sqlites(sqlite.Path(), "OFF", days, orders);
    races.Run({'j', "one posting, never flushed (ours over files whose flush does nothing)", 100},
              {{.name = "Lodrin",
                .work = [&] { return ours.Post(); },
                .prepare = [&] { ours.FindOrder(); }},
               {"SQLite, journal, OFF", [&] { return sqlites.Post(); }, 1.0}});
    CheckResult(races, ours, sqlites);
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
