// SPDX-License-Identifier: Apache-2.0
// OtherStation: another process that adds jobs to both files through openings of its own.
#pragma once

#include "bench/History.h"

#include <string>
#include <sys/types.h>

namespace bench {

// Requires: made before this process opens the files.
class OtherStation {
public:
    OtherStation(const std::string& mdb, const std::string& sqlite);
    // It ends when it is told nothing more.
    ~OtherStation();
    OtherStation(const OtherStation&) = delete;
    OtherStation& operator=(const OtherStation&) = delete;

    // Returns when the job is stored. Errors: std::runtime_error when it could not be.
    void AddToOurs(const Day& day, int number) { Tell({'o', day, number}); }
    void AddToSqlite(const Day& day, int number) { Tell({'s', day, number}); }

private:
    struct Order {
        char file = 'o';
        Day day;
        int number = 0;
    };
    void Tell(const Order& order) const;
    static int Work(int orders, int answers, const std::string& mdb, const std::string& sqlite);

    pid_t process_ = -1;
    int orders_ = -1, answers_ = -1;
};

}  // namespace bench
