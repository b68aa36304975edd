// SPDX-License-Identifier: Apache-2.0
// lodrin_demo: plays a working day in a shop through the program's real windows, leaves a
// picture of each window, and prints what the database holds afterwards.
//
//     lodrin_demo SHOPDIR OUTDIR      SHOPDIR holds Kelvaro.mdb and is changed

#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/Format.h"
#include "base/NumberedError.h"
#include "labor/ClockTime.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/ShopStyle.h"
#include "tools/demo/Day.h"

#include <QApplication>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>
#include <vector>

namespace {

using demo::StagedShop;

std::string Cell(const base::Value& value)
{
    const base::Date* date = value.As<base::Date>();
    if (date == nullptr) return base::TextOf(value);
    return base::Format(value, date->days < 1 ? lodrin::kClockTime : lodrin::kClockDay);
}

// One line a row: the fields that hold something.
void Print(dao::Database& database, const std::string& table, const std::string& sql)
{
    std::cout << "\n" << table << "\n";
    dao::Recordset rows = database.OpenRecordset(sql);
    for (; !rows.Eof(); rows.MoveNext()) {
        for (int field = 0; field < rows.FieldCount(); ++field) {
            const std::string cell = Cell(rows[field].Value());
            if (!cell.empty()) std::cout << "  " << rows.FieldName(field) << "=" << cell;
        }
        std::cout << "\n";
    }
}

void PrintDay(StagedShop& staged, const std::filesystem::path& shopFolder)
{
    const std::string today =
        "#" + base::Format(base::DatePartOf(staged.clock.Now()), lodrin::kClockDay) + "#";
    dao::Database database = staged.engine.DefaultWorkspace().OpenDatabase(
        staged.paths.ToHost(shopFolder.string() + "\\Kelvaro.mdb"));
    Print(database, "LDEmp, the technicians at work",
          "SELECT * FROM LDEmp WHERE WorkDate = " + today + " ORDER BY Name");
    Print(database, "LDHistory, the jobs of the day",
          "SELECT * FROM LDHistory WHERE WorkDate = " + today);
    Print(database, "Labor, as posted to the management system",
          "SELECT * FROM Labor WHERE FlagDate = " + today);
    Print(database, "LDTotals, the days that were ended",
          "SELECT * FROM LDTotals WHERE WorkDate = " + today);
}

// The day after the shop's last one, or today in a shop that never clocked.
base::Date NextWorkingDay(const std::filesystem::path& shopFolder)
{
    const base::Date today = base::DatePartOf(platform::qt::QtClock().Now());
    dao::DBEngine engine({.now = [today] { return today; }});
    dao::Database database =
        engine.DefaultWorkspace().OpenDatabase((shopFolder / "Kelvaro.mdb").string());
    base::Date last{0};
    try {
        dao::Recordset employees = database.OpenRecordset("SELECT * FROM LDEmp");
        for (; !employees.Eof(); employees.MoveNext())
            if (const base::Value day = employees["WorkDate"]; day.IsDate())
                last = std::max(last, *day.As<base::Date>());
    } catch (const base::NumberedError&) {
        return today;
    }
    return last.days > 0 ? base::Date{last.days + 1} : today;
}

// What the program put down in its log, each line once, without its time.
void PrintLog(const std::filesystem::path& log)
{
    std::ifstream lines(log);
    std::vector<std::pair<std::string, int>> kinds;
    for (std::string line; std::getline(lines, line);) {
        const std::string kind = line.substr(0, line.rfind('\'') + 1);
        if (kinds.empty() || kinds.back().first != kind) kinds.push_back({kind, 0});
        ++kinds.back().second;
    }
    if (kinds.empty()) return;
    std::cout << "\nLodrin.Log: steps that could not be done, after which the clock went on\n";
    for (const auto& kind : kinds)
        std::cout << "  " << kind.second << " x " << kind.first << "\n";
}

int Play(const std::filesystem::path& shopFolder, const std::filesystem::path& out)
{
    const std::filesystem::path programFolder = out / "program";
    std::filesystem::create_directories(programFolder);
    std::filesystem::remove(programFolder / "Lodrin.Log");
    StagedShop staged(programFolder, shopFolder, NextWorkingDay(shopFolder));
    demo::Album album(QString::fromStdString(out.string()));
    demo::Day day(staged, album);
    day.Play();
    PrintDay(staged, shopFolder);
    PrintLog(programFolder / "Lodrin.Log");
    for (const std::string& fault : day.Faults())
        std::cerr << "otherwise than expected: " << fault << "\n";
    return day.Faults().empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Lodrin");
    QApplication::setQuitOnLastWindowClosed(false);
    platform::qt::ShopStyle::ApplyTo(application);
    if (argc != 3) {
        std::cerr << "usage: lodrin_demo SHOPDIR OUTDIR\n";
        return 2;
    }
    try {
        return Play(std::filesystem::absolute(argv[1]), std::filesystem::absolute(argv[2]));
    } catch (const base::NumberedError& error) {
        std::cerr << "error " << error.Number() << ": " << error.what() << "\n";
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
    } catch (const platform::ProgramEnded& ended) {
        std::cerr << "the program ended itself with " << ended.exitCode << "\n";
    }
    return 1;
}
