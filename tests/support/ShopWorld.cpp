// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ShopWorld.h"

#include "app/Dispatch.h"
#include "base/Calendar.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "floor/cboRO.h"
#include "floor/grdEmp.h"
#include "labor/GetHistory.h"
#include "labor/cmdBreak.h"
#include "labor/cmdEndDay.h"

#include <stdexcept>
#include <thread>

namespace tests {

namespace {

constexpr int kEnterKey = 13;
constexpr const char* kLogPath = "/Lodrin.Log";
constexpr const char* kQuestionForPIN = "Please enter your PIN";
constexpr const char* kSure = "This will close out your time for today.  Are you sure?";

base::Date Read(std::string_view text)
{
    const std::optional<base::Date> date = base::ReadDate(text);
    if (!date) throw std::logic_error("no date or time: " + std::string(text));
    return *date;
}

Record TheOne(const std::vector<Record>& rows, const std::string& what)
{
    if (rows.size() != 1) throw std::logic_error(std::to_string(rows.size()) + " rows for " + what);
    return rows.front();
}

}  // namespace

ShopWorld::ShopWorld(jet::io::FileSystem& disk)
    : services(fakes.AsServices()), engine(Settings({}), disk), shop(dialogs, services, engine)
{
    shop.values.DataPath = "C:\\Shop";
}

ShopWorld::ShopWorld(const std::filesystem::path& folder, const std::string& machine)
    : services(fakes.AsServices()), engine(Settings(machine)), shop(dialogs, services, engine)
{
    shop.values.DataPath = folder.string();
}

ShopWorld::ShopWorld(const std::filesystem::path& folder, jet::io::FileSystem& disk)
    : services(fakes.AsServices()), engine(Settings({}), disk), shop(dialogs, services, engine)
{
    shop.values.DataPath = folder.string();
}

dao::EngineSettings ShopWorld::Settings(const std::string& machine)
{
    return {.now = [this] { return fakes.clock.Now(); },
            .machine = machine,
            .pause =
                [this](std::chrono::milliseconds length) {
                    if (pause) return pause(length);
                    std::this_thread::sleep_for(length);
                }};
}

std::string ShopWorld::DatabasePath() const
{
    return services.paths.ToHost(shop.values.DataPath + "\\Kelvaro.mdb");
}

void ShopWorld::Append(const std::vector<dao::TableDef>& tables)
{
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    for (const dao::TableDef& table : tables)
        database.Append(table);
}

void ShopWorld::MakeManagementDatabase()
{
    CreateDatabase(engine, DatabasePath(), kind);
    Append(ManagementTables());
}

void ShopWorld::MakeDatabase()
{
    MakeManagementDatabase();
    Append(ProgramTables());
    Add({LaborType("BL", "Body Labor"), LaborType("RL", "Refinish Labor"),
         LaborType("FL", "Frame Labor"), LaborType("ML", "Mechanical"),
         LaborType("SL", "Structural"), LaborType("GL", "Glass"), LaborType("DL", "Detail"),
         Department("Body", 30), Department("Paint", 70), Department("Detail", 90),
         ProgressText("In the paint booth")});
}

void ShopWorld::Add(const std::vector<ShopEntry>& entries)
{
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    for (const ShopEntry& entry : entries) {
        for (const NewRow& row : entry.Rows()) {
            dao::Recordset table = database.OpenRecordset(row.table);
            table.AddNew();
            for (const auto& field : row.values)
                table[field.first] = field.second;
            table.Update();
        }
    }
}

ShopWorld& ShopWorld::Given(std::initializer_list<ShopEntry> entries)
{
    Add(entries);
    return *this;
}

ShopWorld& ShopWorld::GivenNo(std::string_view table)
{
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    dao::Recordset rows = database.OpenRecordset(table);
    for (; !rows.Eof(); rows.MoveNext())
        rows.Delete();
    return *this;
}

ShopWorld& ShopWorld::Loses(std::string_view table, std::string_view criteria)
{
    OfAnother(table, criteria, [](dao::Recordset& row) { row.Delete(); });
    return *this;
}

ShopWorld& ShopWorld::Changes(std::string_view table, std::string_view criteria,
                              std::string_view field, const base::Value& value)
{
    OfAnother(table, criteria, [&](dao::Recordset& row) {
        row.Edit();
        row[field] = value;
        row.Update();
    });
    return *this;
}

// Somebody else does this with the row that is so.
void ShopWorld::OfAnother(std::string_view table, std::string_view criteria,
                          const std::function<void(dao::Recordset&)>& act)
{
    dao::Database other = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    dao::Recordset rows = other.OpenRecordset("SELECT * FROM " + std::string(table));
    rows.FindFirst(criteria);
    if (rows.NoMatch()) throw std::logic_error("no row for " + std::string(criteria));
    act(rows);
}

ShopWorld& ShopWorld::Open()
{
    lodrin::MainWindowState& state = shop.state;
    state.database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    state.employees =
        state.database.OpenRecordset("SELECT * FROM LDEmp WHERE LEFT(Name,1) <> '@' ORDER BY Name");
    state.history = state.database.OpenRecordset("SELECT * FROM LDHistory");
    shop.window.grdEmp.Bind(state.employees);
    shop.window.grdEmp.SetRow(0);
    lodrin::EmpView(shop);
    lodrin::GetROList(shop);
    state.currentEmployee = -1;
    lodrin::GetHistory(shop);
    state.statusDatabase = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    state.rsStatus = state.statusDatabase.OpenRecordset(
        "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType");
    return *this;
}

ShopWorld& ShopWorld::At(std::string_view time)
{
    if (!shop.state.database.IsSet()) Open();
    const base::Date today = base::DatePartOf(fakes.clock.Now());
    fakes.clock.Set({today.days + Read(time).days});
    return *this;
}

ShopWorld& ShopWorld::On(std::string_view day)
{
    const base::Date time = base::TimePartOf(fakes.clock.Now());
    fakes.clock.Set({Read(day).days + time.days});
    return *this;
}

int ShopWorld::BoardRow(std::string_view name) const
{
    const platform::Grid& board = shop.window.grdEmp;
    for (int row = 1; row <= board.RowCount(); ++row) {
        if (board.Shown(row, lodrin::LDEmp::Name.column) == name) return row;
    }
    throw std::logic_error("the board does not show " + std::string(name));
}

ShopWorld& ShopWorld::Select(std::string_view name)
{
    if (!shop.state.database.IsSet()) Open();
    platform::Grid& board = shop.window.grdEmp;
    const int row = BoardRow(name);
    const int before = board.Row();
    if (row != before) {
        board.SetRow(row);
        lodrin::Dispatch(shop, [&](lodrin::Shop& on) {
            lodrin::grdEmp_RowColChange(on, before, lodrin::LDEmp::Name.column);
        });
    }
    lodrin::Dispatch(shop, lodrin::grdEmp_Click);
    return *this;
}

ShopWorld& ShopWorld::Types(const std::string& pin)
{
    fakes.prompts.ExpectInput(kQuestionForPIN, pin);
    return *this;
}

ShopWorld& ShopWorld::Picks(const std::string& code, const std::string& department)
{
    dialogs.Pick(code, department);
    return *this;
}

ShopWorld& ShopWorld::Leaves()
{
    dialogs.Leave();
    return *this;
}

ShopWorld& ShopWorld::Starts(std::int32_t number)
{
    // With the separator behind it, as an entry of the list is typed; a bare number is reported.
    shop.window.cboRO.SetText(base::TextOf(number) + "  ");
    lodrin::Dispatch(shop, [](lodrin::Shop& on) { lodrin::cboRO_KeyUp(on, kEnterKey); });
    return *this;
}

ShopWorld& ShopWorld::PicksOrder(std::int32_t number)
{
    platform::ComboBox& box = shop.window.cboRO;
    for (int index = 0; index < box.ListCount(); ++index) {
        if (box.List(index).rfind(base::TextOf(number) + "  ", 0) != 0) continue;
        box.SetText(box.List(index));
        lodrin::Dispatch(shop, lodrin::cboRO_Click);
        return *this;
    }
    throw std::logic_error("the box does not list " + std::to_string(number));
}

ShopWorld& ShopWorld::SetsProgress(const std::string& text)
{
    dialogs.PickProgress(text);
    return *this;
}

ShopWorld& ShopWorld::ConfirmsProgress()
{
    dialogs.ConfirmProgress();
    return *this;
}

ShopWorld& ShopWorld::CancelsProgress()
{
    dialogs.CancelProgress();
    return *this;
}

ShopWorld& ShopWorld::IsSure(platform::Answer sure)
{
    fakes.prompts.Expect(kSure, sure);
    return *this;
}

ShopWorld& ShopWorld::GoesOnBreak()
{
    lodrin::Dispatch(shop, lodrin::cmdBreak_Click);
    return *this;
}

ShopWorld& ShopWorld::EndsDay()
{
    lodrin::Dispatch(shop, lodrin::cmdEndDay_Click);
    return *this;
}

ShopWorld& ShopWorld::Ticks()
{
    lodrin::Dispatch(shop, lodrin::Timer1_Timer);
    return *this;
}

std::vector<Record> ShopWorld::Rows(const std::string& sql)
{
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    dao::Recordset rows = database.OpenRecordset(sql);
    return RowsOf(rows);
}

Record ShopWorld::Order(std::int32_t number)
{
    const std::string condition = "WorkOrderNumber = " + std::to_string(number);
    return TheOne(Rows("SELECT * FROM WorkOrder WHERE " + condition), condition);
}

Record ShopWorld::EmployeeRecord(std::string_view name)
{
    const std::string condition = "Name = '" + std::string(name) + "'";
    return TheOne(Rows("SELECT * FROM LDEmp WHERE " + condition), condition);
}

std::vector<Record> ShopWorld::Jobs()
{
    return Rows("LDHistory");
}

std::vector<Record> ShopWorld::LaborLines()
{
    return Rows("Labor");
}

std::vector<Record> ShopWorld::Totals()
{
    return Rows("LDTotals");
}

Contents ShopWorld::Stored()
{
    Contents contents;
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    for (const std::string& name : database.TableNames()) {
        if (name.rfind("MSys", 0) == 0) continue;
        dao::Recordset rows = database.OpenRecordset(name);
        contents[name] = RowsOf(rows);
    }
    return contents;
}

std::string ShopWorld::Board(std::string_view name, const lodrin::BoardField& field) const
{
    return shop.window.grdEmp.Shown(BoardRow(name), field.column);
}

std::vector<std::string> ShopWorld::Reports() const
{
    std::vector<std::string> reports;
    if (!fakes.files.Exists(kLogPath)) return reports;
    const std::string log = fakes.files.Read(kLogPath);
    const std::string start = "\"Error ";
    const std::string between = " in ";
    for (std::size_t at = log.find(start); at != std::string::npos; at = log.find(start, at + 1)) {
        const std::size_t number = at + start.size();
        const std::size_t location = log.find(between, number) + between.size();
        reports.push_back(log.substr(number, location - between.size() - number) + " " +
                          log.substr(location, log.find("()", location) + 2 - location));
    }
    return reports;
}

}  // namespace tests
