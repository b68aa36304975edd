// SPDX-License-Identifier: Apache-2.0
// station: one program of several on a shop's file, to be killed at any instant.
//
//     station hold FOLDER MACHINE SQL             edits the first row; gives it up when input ends
//     station lock FOLDER MACHINE OFFSET LENGTH   locks bytes of the lock file; the same
//     station jobs FOLDER SEAT JOBS SEED          changes jobs as one employee, one after another
//     station add  FOLDER SEAT TIMES              adds one to a row that all add to, again and
//                                                 again
//     station watch FOLDER                        reads everything until there is a file
//                                                 "closing", and tells of rows that are half of one
//                                                 thing and half of another
//     station act  FOLDER ACT OPERATIONS          does one act (ShopActs.h), and is killed when it
//                                                 has told the disk of that many writes, flushes
//                                                 and the like
//
// Prints "ready" when it has what it wants, "done N" after each piece of work, and at the end
// "reads N". A machine without a name (-) leaves no entry in the lock file.
#include "base/Convert.h"
#include "base/Format.h"
#include "base/NumberedError.h"
#include "data/Tables.h"
#include "jet/io/StdFile.h"
#include "jet/locks/LockFile.h"
#include "labor/Hours.h"
#include "tests/support/ShopActs.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/StoredStates.h"
#include "tests/support/WatchedFileSystem.h"

#include <array>
#include <cmath>
#include <csignal>
#include <iostream>
#include <random>

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

// The boxes and lines of the log that were added.
std::string WhatWasTold(const tests::ShopWorld& world, std::size_t boxes, std::size_t reports)
{
    std::string told;
    for (std::size_t i = boxes; i < world.fakes.prompts.boxes.size(); ++i)
        told += " told " + world.fakes.prompts.boxes[i].text;
    const std::vector<std::string> all = world.Reports();
    for (std::size_t i = reports; i < all.size(); ++i)
        told += " told " + all[i];
    return told;
}

// "told" and what in the line of a job during which the program said or wrote that something
// failed.
int Jobs(const Words& words)
{
    const std::int32_t seat = Number(words[3]);
    std::mt19937 dice(static_cast<unsigned>(Number(words[5])));
    const auto any = [&dice](int count) {
        return static_cast<int>(dice() % static_cast<unsigned>(count));
    };
    constexpr std::array<const char*, 6> codes{"BL", "RL", "FL", "ML", "SL", "GL"};
    constexpr std::array<const char*, 3> departments{"Body", "Paint", "Detail"};

    tests::ShopWorld world(words[2], "BAY-" + words[3]);
    world.fakes.prompts.TakeAnyBox();
    int minutes = 6 * 60 + any(60);
    world.On("03/16/2004").At("06:00 AM").Open();
    std::cout << "ready" << std::endl;
    for (int i = 1; i <= Number(words[4]); ++i) {
        minutes = (minutes + 2 + any(20)) % (24 * 60);
        world.At(base::Format(base::Date{minutes / 1440.0}, "hh:mm AM/PM"));
        const std::size_t boxes = world.fakes.prompts.boxes.size();
        const std::size_t reports = world.Reports().size();
        world.Select("Tech" + std::to_string(seat) + ", A");
        world.Picks(codes[static_cast<std::size_t>(any(6))],
                    departments[static_cast<std::size_t>(any(3))]);
        world.Starts(1001 + any(12));
        const std::string told = WhatWasTold(world, boxes, reports);
        const auto counted = world.Rows("SELECT Count(*) AS N FROM Labor WHERE EmployeeID = " +
                                        std::to_string(seat));
        std::cout << "done " << counted.at(0).Text("N") << told << std::endl;
    }
    return 0;
}

// What holds of every row at every moment, because it is stored by one Update.
class Watcher {
public:
    void Look(tests::ShopWorld& world)
    {
        for (const tests::Record& order : world.Rows("SELECT * FROM WorkOrder"))
            Judge(order, OrderIsWhole(order));
        for (const tests::Record& line : world.Rows("SELECT * FROM Labor"))
            Judge(line, JobIsWhole(line, Labor::TimeIN, Labor::TimeOut, Labor::HrsFlagged));
        for (const tests::Record& job : world.Rows("LDHistory"))
            Judge(job, JobIsWhole(job, LDHistory::JobStart, LDHistory::JobEnd, LDHistory::Hrs));
        for (const tests::Record& employee : world.Rows("SELECT * FROM LDEmp ORDER BY Name"))
            Judge(employee, EmployeeIsWhole(employee));
    }
    [[nodiscard]] std::size_t Reads() const { return reads_; }

private:
    void Judge(const tests::Record& row, bool whole)
    {
        ++reads_;
        if (whole) return;
        std::cout << "torn";
        for (const auto& [name, value] : row.fields)
            std::cout << " " << name << "=" << base::TextOf(value);
        std::cout << std::endl;
    }

    // All work at 20 an hour; the notes are whole lines, however long.
    static bool OrderIsWhole(const tests::Record& order)
    {
        for (const char* work : {"Body", "Refinish", "Frame", "Mech", "Struct", "Glass"}) {
            const double hours = base::Val(order[std::string(work) + "Worked"]);
            const double cost = base::Val(order[std::string(work) + "Cost"]);
            if (std::abs(20 * hours - cost) > 0.001) return false;
        }
        const std::string notes = order.Text(WorkOrder::AuditNotes);
        const auto ends = [&](std::string_view end) {
            return notes.size() >= end.size() && notes.substr(notes.size() - end.size()) == end;
        };
        return notes.empty() || (notes.substr(0, 3) == "\r\n[" &&
                                 (ends("to Body") || ends("to Paint") || ends("to Detail")));
    }

    static bool JobIsWhole(const tests::Record& job, std::string_view start, std::string_view end,
                           std::string_view hours)
    {
        if (job[start].IsNull() || job[end].IsNull()) return false;
        return std::abs(base::Val(HoursBetween(job[start], job[end], "##.00")) -
                        base::Val(job[hours])) < 0.001;
    }

    static bool EmployeeIsWhole(const tests::Record& employee)
    {
        const std::string number = employee.Text(LDEmp::WONumber.name);
        const std::string customer = employee.Text(LDEmp::Customer.name);
        const bool idle = number.empty() || number == "0";  // as the table or the clock leaves it
        return idle ? customer.empty() : customer == "Customer " + number;
    }

    std::size_t reads_ = 0;
};

int Watch(const Words& words)
{
    tests::ShopWorld world(words[2], "OFFICE");
    Watcher watcher;
    std::cout << "ready" << std::endl;
    while (!std::filesystem::exists(words[2] + "/closing"))
        watcher.Look(world);
    std::cout << "reads " << watcher.Reads() << std::endl;
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
    if (words.size() == 6 && words[1] == "jobs") return Jobs(words);
    if (words.size() == 5 && words[1] == "add") return Add(words);
    if (words.size() == 3 && words[1] == "watch") return Watch(words);
    if (words.size() == 5 && words[1] == "act") return ActAndDie(words);
    std::cerr << "usage: station hold|lock|jobs|add|watch|act FOLDER ...\n";
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
