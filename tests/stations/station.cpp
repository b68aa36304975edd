// SPDX-License-Identifier: Apache-2.0
// station: one program of several on a shop's file, to be killed at any instant.
//
//     station hold FOLDER MACHINE SQL             edits the first row; gives it up when input ends
//     station lock FOLDER MACHINE OFFSET LENGTH   locks bytes of the lock file; the same
//     station jobs FOLDER SEAT FROM END SEED      changes jobs as one employee, one after another
//                                                 (StationJobs.h)
//     station day  FOLDER FIRST COUNT SEED        the same for the whole day of some employees
//     station add  FOLDER SEAT TIMES              adds one to a row that all add to, again and
//                                                 again
//     station watch FOLDER                        reads everything, again and again
//                                                 (StationWatch.h)
//     station act  FOLDER ACT OPERATIONS          does one act (ShopActs.h), and is killed when it
//                                                 has told the disk of that many writes, flushes
//                                                 and the like
//
// Prints "ready" when it has what it wants, and "done N" after each piece of work. A machine
// without a name (-) leaves no entry in the lock file.
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "data/Tables.h"
#include "jet/io/StdFile.h"
#include "jet/locks/LockFile.h"
#include "tests/stations/StationJobs.h"
#include "tests/stations/StationWatch.h"
#include "tests/support/ShopActs.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/StoredStates.h"
#include "tests/support/WatchedFileSystem.h"

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace lodrin;
using base::Value;
using Words = std::vector<std::string>;

void WaitForEndOfInput()
{
    std::cout << "ready" << std::endl;
    std::string line;
    while (std::getline(std::cin, line)) {
    }
}

std::int32_t Number(const std::string& word)
{
    return static_cast<std::int32_t>(std::stol(word));
}

int Hold(const Words& words)
{
    tests::ShopWorld world(words[2], words[3]);
    dao::Database database = world.engine.DefaultWorkspace().OpenDatabase(world.DatabasePath());
    dao::Recordset rows = database.OpenRecordset(words[4]);
    rows.Edit();
    WaitForEndOfInput();
    return 0;
}

int Lock(const Words& words)
{
    jet::io::StdFileSystem files;
    const std::string path = words[2] + "/Kelvaro.mdb";
    const std::string machine = words[3] == "-" ? std::string() : words[3];
    const jet::locks::LockFile user(files, path, {machine, "Admin"}, false, [](auto) {});
    const auto file = files.Open(jet::locks::LockFilePath(path), jet::io::OpenMode::ReadWrite);
    // The last byte tells whose the lock is, so the place is added.
    const std::uint64_t offset = std::stoull(words[4]), length = std::stoull(words[5]);
    const bool oneByte = length == 1;
    if (!file->TryLock(jet::io::LockKind::Exclusive, oneByte ? offset + user.Place() : offset + 1,
                       oneByte ? 1 : length + user.Place()))
        return 1;
    WaitForEndOfInput();
    return 0;
}

// Lock errors and rows that another changed meanwhile are met again and again.
bool IsConflict(int number)
{
    return number == 3260 || number == 3218 || number == 3186 || number == 3197;
}

int Add(const Words& words)
{
    tests::ShopWorld world(words[2], "BAY-" + words[3]);
    dao::Database database = world.engine.DefaultWorkspace().OpenDatabase(world.DatabasePath());
    dao::Recordset lines = database.OpenRecordset("Labor");
    dao::Recordset orders = database.OpenRecordset("SELECT * FROM WorkOrder");
    std::cout << "ready" << std::endl;
    for (int i = 1; i <= Number(words[4]); ++i) {
        lines.AddNew();
        lines[Labor::EmployeeID] = Number(words[3]);
        lines[Labor::HrsFlagged] = 1.0;
        lines[Labor::TimeIN] = Value(base::Date{0.5});
        lines.Update();
        for (bool stored = false; !stored;) {
            try {
                orders.FindFirst("WorkOrderNumber = 1001");
                orders.Edit();
                orders[WorkOrder::BodyWorked] =
                    base::Plus(orders[WorkOrder::BodyWorked], Value(1.0));
                orders.Update();
                stored = true;
            } catch (const base::NumberedError& error) {
                if (!IsConflict(error.Number())) throw;
            }
        }
        std::cout << "done " << i << std::endl;
    }
    return 0;
}

int ActAndDie(const Words& words)
{
    jet::io::StdFileSystem files;
    tests::WatchedFileSystem disk(files);
    std::size_t left = std::stoul(words[4]);
    disk.beforeCall = [&disk, &left] {
        if (!tests::IsOperation(disk.call)) return;
        if (left == 0) std::raise(SIGKILL);
        --left;
    };
    tests::ShopWorld world(words[2], disk);
    world.fakes.prompts.TakeAnyBox();
    tests::ShopActOf(words[3]).run(world);
    return 0;
}

int Run(const Words& words)
{
    if (words.size() == 5 && words[1] == "hold") return Hold(words);
    if (words.size() == 6 && words[1] == "lock") return Lock(words);
    if (words.size() == 7 && words[1] == "jobs")
        return tests::ChangeJobs(
            {words[2], Number(words[3]), Number(words[4]), Number(words[5]), Number(words[6])});
    if (words.size() == 6 && words[1] == "day")
        return tests::WorkTheDay({words[2], Number(words[3]), Number(words[4]), Number(words[5])});
    if (words.size() == 5 && words[1] == "add") return Add(words);
    if (words.size() == 3 && words[1] == "watch") return tests::WatchRows(words[2]);
    if (words.size() == 5 && words[1] == "act") return ActAndDie(words);
    std::cerr << "usage: station hold|lock|jobs|day|add|watch|act FOLDER ...\n";
    return 2;
}

}  // namespace

int main(int count, char** words)
{
    try {
        return Run(Words(words, words + count));
    } catch (const base::NumberedError& error) {
        std::cout << "error " << error.Number() << " " << error.what() << " " << error.Detail()
                  << std::endl;
        return 3;
    }
}
