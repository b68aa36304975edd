// SPDX-License-Identifier: Apache-2.0
// Sqlite: the same rows in SQLite, asked and changed in the same way.
#pragma once

#include "bench/BenchShop.h"

#include <initializer_list>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <variant>

namespace bench {

// What is put in for a `?`.
using SqliteValue = std::variant<std::int64_t, double, std::string>;

// A statement prepared once. Errors: std::runtime_error with SQLite's message.
class SqliteStatement {
public:
    SqliteStatement(sqlite3* database, const std::string& sql);

    // Puts the values in and starts anew.
    void Bind(std::initializer_list<SqliteValue> values);
    // False when there is no further row.
    bool Step();
    // Runs a change to its end.
    void Run(std::initializer_list<SqliteValue> values);
    [[nodiscard]] std::int64_t Whole(int field) const;
    [[nodiscard]] double Number(int field) const;
    // Reads one field, or all fields, of the row at hand.
    void AddField(Reading& reading, int field) const;
    void AddFields(Reading& reading) const;
    // Ends the reading, so that no lock stays.
    void Reset();

    [[nodiscard]] sqlite3_stmt* Handle() const { return statement_.get(); }

private:
    struct Close {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, Close> statement_;
};

// Errors: std::runtime_error with SQLite's message.
class Sqlite {
public:
    // Rule: the file is mapped into memory.
    explicit Sqlite(const std::string& path);

    void Run(const std::string& sql);
    [[nodiscard]] SqliteStatement Prepare(const std::string& sql) const;
    // The rows that a statement gives, `limit` of them at most, every field of each of them read.
    [[nodiscard]] Reading Read(const std::string& sql, int limit = kAll) const;

private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    std::unique_ptr<sqlite3, Close> database_;
};

}  // namespace bench
