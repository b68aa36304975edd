// SPDX-License-Identifier: Apache-2.0
#include "bench/EmployeesDay.h"

#include "labor/DailyTotals.h"

#include <array>

namespace bench {

namespace {

constexpr std::size_t kLastJobs = 10;
constexpr const char* kJobs = "SELECT * FROM LDHistory WHERE EmpID = ";

// As labor/GetHistory.cpp puts it.
std::string JobsOfDay(const Day& day)
{
    return kJobs + day.Employee() + " AND WorkDate = #" + day.DateText() +
           "# ORDER BY JobStart DESC;";
}

// The peer keeps a date as its number.
std::string OfDayInSqlite(const Day& day)
{
    return day.Employee() + " AND WorkDate = " + std::to_string(static_cast<int>(day.date));
}

Reading OurJobs(OurShop& shop, const Day& day)
{
    return shop.Read(JobsOfDay(day));
}

Reading SqlitesJobs(const Sqlite& database, const Day& day)
{
    return database.Read(kJobs + OfDayInSqlite(day) + " ORDER BY JobStart DESC");
}

Reading OurTotals(OurShop& shop, const Day& day)
{
    return shop.Read(lodrin::CountOfJobs(day.Employee(), day.DateText()));
}

Reading SqlitesTotals(const Sqlite& database, const Day& day)
{
    return database.Read("SELECT COUNT(ID), SUM(Hrs) FROM LDHistory WHERE EmpID = " +
                         OfDayInSqlite(day));
}

// The steps of GetLast10.
Reading OurLastTen(OurShop& shop, const Day& day)
{
    dao::Recordset jobs = shop.Database().OpenRecordset(kJobs + day.Employee());
    Reading reading;
    if (jobs.RecordCount() <= 0) return reading;
    jobs.MoveLast();
    for (std::size_t job = 0; job < kLastJobs && !jobs.Bof(); ++job) {
        AddField(reading, jobs["WONumb"]);
        AddField(reading, jobs["VehDesc"]);
        ++reading.rows;
        jobs.MovePrevious();
    }
    return reading;
}

// The same statement; SQLite walks forwards only, so the last ten are kept on the way.
Reading SqlitesLastTen(const Sqlite& database, const Day& day)
{
    SqliteStatement jobs = database.Prepare(kJobs + day.Employee() + " ORDER BY ID");
    std::array<Reading, kLastJobs> last{};
    constexpr int kNumber = 5;
    constexpr int kVehicle = 9;
    for (std::size_t job = 0; jobs.Step(); ++job) {
        Reading& one = last[job % kLastJobs] = {.rows = 1};
        jobs.AddField(one, kNumber);
        jobs.AddField(one, kVehicle);
    }
    Reading reading;
    for (const Reading& one : last) {
        reading.rows += one.rows;
        reading.AddNumber(one.sum);
    }
    return reading;
}

}  // namespace

const std::vector<DayQuestion>& DayQuestions()
{
    static const std::vector<DayQuestion> questions = {
        {'d', 'e', "the day's jobs of one employee, newest first", 20, OurJobs, SqlitesJobs},
        {'f', 'f', "count and sum of one employee's day", 20, OurTotals, SqlitesTotals},
        {'f', 'f', "the last ten jobs of one employee", 2, OurLastTen, SqlitesLastTen}};
    return questions;
}

Reading LastTenByNumber(const Sqlite& database, const Day& day)
{
    return database.Read("SELECT WONumb, VehDesc FROM LDHistory WHERE EmpID = " + day.Employee() +
                         " ORDER BY ID DESC LIMIT 10");
}

}  // namespace bench
