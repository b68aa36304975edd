// SPDX-License-Identifier: Apache-2.0
// ShopWorld: a whole shop for one test: database, world outside, user.
#pragma once

#include "app/Shop.h"
#include "data/Tables.h"
#include "jet/dao/DBEngine.h"
#include "platform/fake/Fakes.h"
#include "tests/support/FileKind.h"
#include "tests/support/Records.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ShopTables.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace jet::io {
class FileSystem;
}

namespace tests {

// All rows of all tables that are not the system's, in stored order.
using Contents = std::map<std::string, std::vector<Record>>;

// The shop lies in C:\Shop on the given disk; its clock stands at noon of March 15, 2004.
//
//     Given({Employee("Jones, Bob", 8), RepairOrder(1001)});
//     At("08:00 AM").Select("Jones, Bob").Picks("BL", "Paint").Starts(1001);
//     EXPECT_EQ(Order(1001)[WorkOrder::BLTech], 8);
//
// Rule: the verbs act as the user through the same procedures as the window; each returns the shop,
//       so that a sentence can go on. The first of them opens the shop (Open) when it is not open.
class ShopWorld {
public:
    // Requires: `disk` outlives the shop.
    explicit ShopWorld(jet::io::FileSystem& disk);
    // The shop whose files lie in this folder of the machine; others are told this machine's name.
    explicit ShopWorld(const std::filesystem::path& folder, const std::string& machine = {});
    // The same through a disk that leads to this machine's.
    ShopWorld(const std::filesystem::path& folder, jet::io::FileSystem& disk);
    ShopWorld(const ShopWorld&) = delete;
    ShopWorld& operator=(const ShopWorld&) = delete;

    // Makes the database file with all tables, the labor types BL, RL, FL, ML, SL, GL and DL
    // (Detail) and the departments Body 30, Paint 70 and Detail 90.
    void MakeDatabase();
    // The same with the management system's tables alone, and empty.
    void MakeManagementDatabase();
    ShopWorld& Given(std::initializer_list<ShopEntry> entries);
    // Deletes all rows of a table.
    ShopWorld& GivenNo(std::string_view table);
    // Somebody else deletes the one row of the table that is so.
    ShopWorld& Loses(std::string_view table, std::string_view criteria);
    // Somebody else stores a value in it.
    ShopWorld& Changes(std::string_view table, std::string_view criteria, std::string_view field,
                       const base::Value& value);

    // Leaves the window as the opening of the database does: sets open, board and lists filled, no
    // employee chosen. Nothing is synchronised and no day closed out.
    ShopWorld& Open();

    // Sets the clock: a time of the same day; another day at the same time.
    ShopWorld& At(std::string_view time);
    ShopWorld& On(std::string_view day);
    // Clicks the employee's row.
    ShopWorld& Select(std::string_view name);
    // What he will type at the PIN prompt, pick in the labor type dialog; or that he leaves it.
    ShopWorld& Types(const std::string& pin);
    ShopWorld& Picks(const std::string& code, const std::string& department);
    ShopWorld& Leaves();
    // Types the number and presses Enter; picks the entry of that number in the list.
    ShopWorld& Starts(std::int32_t number);
    ShopWorld& PicksOrder(std::int32_t number);

    // In the next progress dialog he picks this text; confirms what is proposed; cancels.
    ShopWorld& SetsProgress(const std::string& text);
    ShopWorld& ConfirmsProgress();
    ShopWorld& CancelsProgress();
    // What he will answer when asked whether he is sure to end his day.
    ShopWorld& IsSure(platform::Answer sure = platform::Answer::Yes);
    // Presses the button.
    ShopWorld& GoesOnBreak();
    ShopWorld& EndsDay();
    // One tick of the main window's timer.
    ShopWorld& Ticks();

    // The stored rows. Rule: exactly one must match, otherwise std::logic_error.
    [[nodiscard]] Record Order(std::int32_t number);
    [[nodiscard]] Record EmployeeRecord(std::string_view name);
    [[nodiscard]] std::vector<Record> Jobs();        // LDHistory
    [[nodiscard]] std::vector<Record> LaborLines();  // Labor
    [[nodiscard]] std::vector<Record> Totals();      // LDTotals
    [[nodiscard]] std::vector<Record> Rows(const std::string& sql);
    [[nodiscard]] Contents Stored();

    // What a cell of the employee's row on the board shows.
    [[nodiscard]] std::string Board(std::string_view name, const lodrin::BoardField& field) const;
    // The lines of the log: number and location of each, as "3021 Sub frmLodrin!DBOpen()".
    [[nodiscard]] std::vector<std::string> Reports() const;

    // On its disk.
    [[nodiscard]] std::string DatabasePath() const;

    // The kind of file that is made.
    FileKind kind = ShopKind();
    platform::Fakes fakes;
    platform::Services services;
    // How the engine waits for a lock; when null, it sleeps.
    std::function<void(std::chrono::milliseconds)> pause;
    dao::DBEngine engine;
    ScriptedDialogs dialogs;
    lodrin::Shop shop;

private:
    [[nodiscard]] int BoardRow(std::string_view name) const;
    [[nodiscard]] dao::EngineSettings Settings(const std::string& machine);
    void Append(const std::vector<dao::TableDef>& tables);
    void Add(const std::vector<ShopEntry>& entries);
    void OfAnother(std::string_view table, std::string_view criteria,
                   const std::function<void(dao::Recordset&)>& act);
};

}  // namespace tests
