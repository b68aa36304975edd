// SPDX-License-Identifier: Apache-2.0
#include "bench/History.h"

#include "base/Convert.h"

namespace bench {

namespace {

constexpr double kHours = 1.5;
constexpr std::int32_t kOrder = 10042, kEntry = 42;
constexpr const char* kVehicle = "2014 Chevrolet Silverado 1500 LT";
constexpr const char* kCustomer = "Harris, Mary";

// A different minute for each job. Units: days.
double StartOf(int number)
{
    return (480 + number % 600) / 1440.0;
}

}  // namespace

std::string Day::DateText() const
{
    return base::TextOf(base::Date{date});
}

std::vector<Day> SomeDays(const BenchShop& shop, int count)
{
    const Sqlite database(shop.Plain());
    SqliteStatement last = database.Prepare("SELECT MAX(ID) FROM LDHistory");
    last.Step();
    SqliteStatement one =
        database.Prepare("SELECT EmpID, WorkDate FROM LDHistory WHERE ID >= ? LIMIT 1");
    std::vector<Day> days;
    constexpr std::int64_t kStride = 7919;  // a prime, so that the places differ
    for (int i = 1; i <= count; ++i) {
        one.Bind({kStride * i * 61 % last.Whole(0) + 1});
        if (one.Step()) days.push_back({static_cast<std::int32_t>(one.Whole(0)), one.Number(1)});
    }
    return days;
}

void AddJob(dao::Recordset& history, const Day& day, int number)
{
    history.AddNew();
    history["EmpID"] = day.employee;
    history["WorkDate"] = base::Date{day.date};
    history["JobStart"] = base::Date{StartOf(number)};
    history["JobEnd"] = base::Date{StartOf(number) + kHours / 24};
    history["WONumb"] = kOrder;
    history["WOID"] = kEntry;
    history["GLType"] = "BL";
    history["Hrs"] = kHours;
    history["VehDesc"] = kVehicle;
    history["Customer"] = kCustomer;
    history.Update();
}

void AddJob(SqliteStatement& history, const Day& day, int number)
{
    history.Run({std::int64_t{day.employee}, day.date, StartOf(number),
                 StartOf(number) + kHours / 24, std::int64_t{kOrder}, std::int64_t{kEntry}, "BL",
                 kHours, kVehicle, kCustomer});
}

}  // namespace bench
