// SPDX-License-Identifier: Apache-2.0
// Peer: the same rows in SQLite, asked and changed in the same way.
#pragma once

#include "bench/History.h"
#include "bench/Reading.h"

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
    // The file of a peer that is gone, mapped into memory.
    [[nodiscard]] static Peer Reopened(const std::string& path) { return Peer(OpenFile(path)); }

    void Append(const Job& job);
    void Run(const char* sql);
    // The rows that a question gives, `limit` of them at most, every field of each of them read.
    [[nodiscard]] Reading Read(const std::string& sql, int limit) const;
    // The counter value of the first row with this repair order, 0 without one.
    [[nodiscard]] std::int64_t Find(int workOrder);
    void SetHours(std::int64_t id, double hours);

private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Connection = std::unique_ptr<sqlite3, Close>;
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    explicit Peer(Connection database);
    [[nodiscard]] static Connection OpenFile(const std::string& path);
    [[nodiscard]] Statement Prepare(const std::string& sql) const;
    [[noreturn]] void Fail() const;

    Connection database_;
    Statement insert_, find_, update_;
};

}  // namespace bench
