// SPDX-License-Identifier: Apache-2.0
// Peer: the same rows in SQLite, asked and changed in the same way.
#pragma once

#include "bench/History.h"

#include <memory>
#include <sqlite3.h>
#include <string>

namespace bench {

// Errors: std::runtime_error with SQLite's message.
class Peer {
public:
    // A new file with an empty history. Rule: every change is on the disk when it returns (rollback
    // journal, full synchronisation), as with ours.
    explicit Peer(const std::string& path);

    void Append(const Job& job);
    void Run(const char* sql);
    // The number of rows of one employee and day, every row stepped on and one field of it read.
    [[nodiscard]] int Scan(int employee, double day);
    // The counter value of the first row with this repair order, 0 without one.
    [[nodiscard]] std::int64_t Find(int workOrder);
    void SetHours(std::int64_t id, double hours);

private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    [[nodiscard]] Statement Prepare(const char* sql) const;
    [[noreturn]] void Fail() const;

    std::unique_ptr<sqlite3, Close> database_;
    Statement insert_, scan_, find_, update_;
};

}  // namespace bench
