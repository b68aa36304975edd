// SPDX-License-Identifier: Apache-2.0
#include "bench/Sqlite.h"

#include <stdexcept>

namespace bench {

namespace {

[[noreturn]] void Fail(sqlite3* database)
{
    throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(database));
}

void BindOne(sqlite3_stmt* statement, int at, const SqliteValue& value)
{
    if (const auto* const whole = std::get_if<std::int64_t>(&value))
        sqlite3_bind_int64(statement, at, *whole);
    else if (const auto* const number = std::get_if<double>(&value))
        sqlite3_bind_double(statement, at, *number);
    else if (const auto* const text = std::get_if<std::string>(&value))
        sqlite3_bind_text(statement, at, text->data(), static_cast<int>(text->size()),
                          SQLITE_TRANSIENT);
}

}  // namespace

SqliteStatement::SqliteStatement(sqlite3* database, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        Fail(database);
    statement_.reset(statement);
}

void SqliteStatement::Bind(std::initializer_list<SqliteValue> values)
{
    Reset();
    int at = 0;
    for (const SqliteValue& value : values)
        BindOne(Handle(), ++at, value);
}

bool SqliteStatement::Step()
{
    const int result = sqlite3_step(Handle());
    if (result != SQLITE_ROW && result != SQLITE_DONE) Fail(sqlite3_db_handle(Handle()));
    return result == SQLITE_ROW;
}

void SqliteStatement::Run(std::initializer_list<SqliteValue> values)
{
    Bind(values);
    while (Step()) {
    }
    Reset();
}

std::int64_t SqliteStatement::Whole(int field) const
{
    return sqlite3_column_int64(Handle(), field);
}

double SqliteStatement::Number(int field) const
{
    return sqlite3_column_double(Handle(), field);
}

void SqliteStatement::AddField(Reading& reading, int field) const
{
    switch (sqlite3_column_type(Handle(), field)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        return reading.AddNumber(sqlite3_column_double(Handle(), field));
    case SQLITE_TEXT:
        if (sqlite3_column_text(Handle(), field) != nullptr)
            reading.AddText(static_cast<std::size_t>(sqlite3_column_bytes(Handle(), field)));
        return;
    default:
        return;
    }
}

void SqliteStatement::AddFields(Reading& reading) const
{
    const int fields = sqlite3_column_count(Handle());
    for (int field = 0; field < fields; ++field)
        AddField(reading, field);
    ++reading.rows;
}

void SqliteStatement::Reset()
{
    sqlite3_reset(Handle());
}

Sqlite::Sqlite(const std::string& path)
{
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(path.c_str(), &opened);
    database_.reset(opened);
    if (result != SQLITE_OK) Fail(opened);
    Run("PRAGMA mmap_size = 2147418112");
}

void Sqlite::Run(const std::string& sql)
{
    if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail(database_.get());
}

SqliteStatement Sqlite::Prepare(const std::string& sql) const
{
    return {database_.get(), sql};
}

Reading Sqlite::Read(const std::string& sql, int limit) const
{
    SqliteStatement rows = Prepare(sql);
    Reading reading;
    while (reading.rows < limit && rows.Step())
        rows.AddFields(reading);
    return reading;
}

}  // namespace bench
