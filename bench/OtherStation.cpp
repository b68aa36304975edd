// SPDX-License-Identifier: Apache-2.0
#include "bench/OtherStation.h"

#include <array>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

int OtherStation::Work(int orders, int answers, const std::string& mdb, const std::string& sqlite)
{
    OurShop ours(mdb);
    dao::Recordset history = ours.Database().OpenRecordset("LDHistory");
    const Sqlite peer(sqlite);
    SqliteStatement insert = peer.Prepare(kSqliteAddJob);
    Order order;
    while (read(orders, &order, sizeof order) == sizeof order) {
        if (order.file == 'o')
            AddJob(history, order.day, order.number);
        else
            AddJob(insert, order.day, order.number);
        if (write(answers, &order.file, 1) != 1) return 1;
    }
    return 0;
}

OtherStation::OtherStation(const std::string& mdb, const std::string& sqlite)
{
    std::array<int, 2> orders{};
    std::array<int, 2> answers{};
    if (pipe(orders.data()) != 0 || pipe(answers.data()) != 0 || (process_ = fork()) < 0)
        throw std::runtime_error("cannot start another process");
    orders_ = orders[1];
    answers_ = answers[0];
    if (process_ != 0) {
        close(orders[0]);
        close(answers[1]);
        return;
    }
    close(orders_);
    close(answers_);
    int status = 1;
    try {
        status = Work(orders[0], answers[1], mdb, sqlite);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "the other station: %s\n", error.what());
    }
    _exit(status);
}

OtherStation::~OtherStation()
{
    close(orders_);
    close(answers_);
    waitpid(process_, nullptr, 0);
}

void OtherStation::Tell(const Order& order) const
{
    char answer = 0;
    if (write(orders_, &order, sizeof order) != sizeof order || read(answers_, &answer, 1) != 1)
        throw std::runtime_error("the other station did not add the job");
}

}  // namespace bench
