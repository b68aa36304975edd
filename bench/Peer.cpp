// SPDX-License-Identifier: Apache-2.0
#include "bench/Peer.h"

#include <stdexcept>

namespace bench {

namespace {

void AddField(Reading& reading, sqlite3_stmt* row, int field)
{
    switch (sqlite3_column_type(row, field)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        return reading.AddNumber(sqlite3_column_double(row, field));
    case SQLITE_TEXT:
        if (sqlite3_column_text(row, field) != nullptr)
            reading.AddText(static_cast<std::size_t>(sqlite3_column_bytes(row, field)));
        return;
    default:
        return;
    }
}

}  // namespace

Peer::Connection Peer::OpenFile(const std::string& path)
{
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(path.c_str(), &opened);
    Connection database(opened);
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(opened));
    return database;
}

Peer::Peer(const std::string& path) : database_(OpenFile(path))
{
    Run("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL; PRAGMA cache_size = -400000;");
    Run("CREATE TABLE LDHistory (ID INTEGER PRIMARY KEY, EmpID INTEGER, WorkDate REAL,"
        " JobStart REAL, JobEnd REAL, WONumb INTEGER, WOID INTEGER, GLType TEXT, Hrs REAL,"
        " VehDesc TEXT, Customer TEXT)");
    insert_ = Prepare("INSERT INTO LDHistory (EmpID, WorkDate, JobStart, JobEnd, WONumb, WOID,"
                      " GLType, Hrs, VehDesc, Customer) VALUES (?,?,?,?,?,?,?,?,?,?)");
    find_ = Prepare("SELECT ID FROM LDHistory WHERE WONumb = ? LIMIT 1");
    update_ = Prepare("UPDATE LDHistory SET Hrs = ? WHERE ID = ?");
}

Peer::Peer(Connection database) : database_(std::move(database))
{
    Run("PRAGMA mmap_size = 1073741824");
}

void Peer::Fail() const
{
    throw std::runtime_error(sqlite3_errmsg(database_.get()));
}

Peer::Statement Peer::Prepare(const std::string& sql) const
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        Fail();
    return Statement(statement);
}

void Peer::Run(const char* sql)
{
    if (sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

void Peer::Append(const Job& job)
{
    sqlite3_stmt* row = insert_.get();
    const auto text = [row](int at, std::string_view value) {
        sqlite3_bind_text(row, at, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    };
    sqlite3_bind_int(row, 1, job.employee);
    sqlite3_bind_double(row, 2, job.workDate);
    sqlite3_bind_double(row, 3, job.jobStart);
    sqlite3_bind_double(row, 4, job.jobEnd);
    sqlite3_bind_int(row, 5, job.workOrder);
    sqlite3_bind_int(row, 6, job.entryNumber);
    text(7, job.laborType);
    sqlite3_bind_double(row, 8, job.hours);
    text(9, job.vehicle);
    text(10, job.customer);
    if (sqlite3_step(row) != SQLITE_DONE) Fail();
    sqlite3_reset(row);
}

Reading Peer::Read(const std::string& sql, int limit) const
{
    const Statement rows = Prepare(sql);
    const int fields = sqlite3_column_count(rows.get());
    Reading reading;
    while (reading.rows < limit && sqlite3_step(rows.get()) == SQLITE_ROW) {
        for (int field = 0; field < fields; ++field)
            AddField(reading, rows.get(), field);
        ++reading.rows;
    }
    return reading;
}

std::int64_t Peer::Find(int workOrder)
{
    sqlite3_stmt* rows = find_.get();
    sqlite3_bind_int(rows, 1, workOrder);
    const std::int64_t id =
        sqlite3_step(rows) == SQLITE_ROW ? sqlite3_column_int64(rows, 0) : std::int64_t{0};
    sqlite3_reset(rows);
    return id;
}

void Peer::SetHours(std::int64_t id, double hours)
{
    sqlite3_stmt* row = update_.get();
    sqlite3_bind_double(row, 1, hours);
    sqlite3_bind_int64(row, 2, id);
    if (sqlite3_step(row) != SQLITE_DONE) Fail();
    sqlite3_reset(row);
}

}  // namespace bench
