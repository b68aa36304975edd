// SPDX-License-Identifier: Apache-2.0
#include "tests/app/SweptProcedures.h"

#include "app/frmLodrin.h"
#include "base/Calendar.h"
#include "data/DBOpen.h"
#include "data/SyncEmployees.h"
#include "data/modBuildLD.h"
#include "floor/VerifyPIN.h"
#include "floor/cboRO.h"
#include "floor/grdEmp.h"
#include "setup/mnuSetup.h"

#include <gtest/gtest.h>

namespace tests {

namespace {

constexpr double kToday = 38061, kFriday = 38058;

// Calls that nothing depends on: around each set of pages that is written, around each number that
// is drawn, and behind each change of the design.
constexpr std::size_t kToldPerSet = 5, kToldPerNumber = 3, kToldPerDesign = 2;

void OneOrderAndTwoPeople(ShopWorld& world)
{
    world.Given({Employee("Jones, Bob", 8).With("PIN", "1234"), Employee("Smith, Ann", 7),
                 RepairOrder(1001), RepairOrder(1002)});
}

void BobHasEndedHisDay(ShopWorld& world)
{
    OneOrderAndTwoPeople(world);
    world.Changes("LDEmp", "EmpID = 8", "EndDay", *base::ReadDate("08:30 AM"));
}

void BobHasWorkedSinceEight(ShopWorld& world)
{
    OneOrderAndTwoPeople(world);
    world.At("08:00 AM").Select("Jones, Bob").Types("1234").Picks("BL", "Body").Starts(1001);
}

void ForgottenFriday(ShopWorld& world)
{
    const base::Date eight = *base::ReadDate("08:00 AM");
    world.Given({Employee("Smith, Ann", 7)
                     .With("StartDay", eight)
                     .With("WorkDate", base::Date{kFriday})
                     .With("StartJob", eight)
                     .With("WO#", 1001)
                     .With("Customer", "Evans, Brian")
                     .With("GLType", "BL"),
                 Employee("Jones, Bob", 8).Without("LDEmp"), RepairOrder(1001)});
}

void BobStandsOnTheBoard(ShopWorld& world)
{
    world.Select("Jones, Bob");
}

void BobStartsHisJob(ShopWorld& world)
{
    world.fakes.prompts.TakeAnyInput("1234");
    world.dialogs.ConfirmOrLeave();
    world.At("09:00 AM").Starts(1002);
}

std::int32_t CountOf(const std::vector<Record>& rows, const char* field, const base::Value& value)
{
    std::int32_t count = 0;
    for (const Record& row : rows)
        count += row[field] == value ? 1 : 0;
    return count;
}

// At most one history row, at most one labor line, and what the order gained is that job or none.
void NothingIsPostedTwice(Scene& scene, double job = 1.0)
{
    EXPECT_LE(scene.Stored("LDHistory").size(), 1U);
    EXPECT_LE(scene.Stored("Labor").size(), 1U);
    double hours = 0;
    for (const Record& order : scene.Stored("WorkOrder"))
        hours += *order["BodyWorked"].As<double>();
    EXPECT_TRUE(hours == 0.0 || hours == job) << hours;
}

// The job of Friday stands on her row or in the history, and in none of them twice.
void FridaysJobIsNeitherLostNorDoubled(Scene& scene)
{
    const std::vector<Record> people = scene.Stored("LDEmp");
    bool open = false;
    for (const Record& each : people)
        open = open || each["StartJob"].IsDate();
    const std::size_t recorded = scene.Stored("LDHistory").size();
    EXPECT_TRUE(open || recorded == 1) << recorded;
    EXPECT_LE(recorded, 1U);
    EXPECT_LE(scene.Stored("Labor").size(), recorded);
    EXPECT_LE(scene.Stored("LDTotals").size(), 1U);
    EXPECT_EQ(CountOf(people, "EmpID", 7), 1);
    EXPECT_EQ(scene.Stored("Profile").size(), 2U);
}

const std::set<std::string> kOpening{
    "Sub frmLodrin!Form_Load()",      "Sub frmLodrin!InitForm()",   "Sub frmLodrin!DBOpen()",
    "Sub frmLodrin!SyncEmployees()",  "Sub modBuildLD!BuildLD()",   "Sub frmLodrin!WriteLabor()",
    "Sub frmLodrin!EmpView()",        "Sub frmLodrin!GetROList()",  "Sub frmLodrin!GetHistory()",
    "Sub frmLodrin!GetHistoryView()", "Sub frmLodrin!GetDataPath()"};
const std::set<std::string> kClosingAJob{
    "Sub frmLodrin!WriteHistory()", "Sub frmLodrin!WriteLabor()", "Sub frmLodrin!GetHistory()",
    "Sub frmLodrin!GetHistoryView()", "Sub frmLodrin!GetLast10()"};

std::set<std::string> And(std::set<std::string> more, const std::set<std::string>& others)
{
    more.insert(others.begin(), others.end());
    return more;
}

std::vector<Procedure> ListsAndDialogs()
{
    return {
        {"VerifyPIN",
         {},
         OneOrderAndTwoPeople,
         [](ShopWorld& world) { world.Select("Jones, Bob"); },
         [](ShopWorld& world) {
             world.fakes.prompts.TakeAnyInput("4321");
             EXPECT_FALSE(lodrin::VerifyPIN(world.shop));
         },
         [](Scene& scene) { EXPECT_TRUE(scene.world.Reports().empty()); },
         {.asksPIN = true}},
        {"GetROList",
         {"Sub frmLodrin!GetROList()"},
         OneOrderAndTwoPeople,
         [](ShopWorld& world) { world.Open(); },
         [](ShopWorld& world) { lodrin::GetROList(world.shop); },
         [](Scene& scene) {
             scene.disk.beforeCall = nullptr;
             lodrin::GetROList(scene.world.shop);
             EXPECT_EQ(scene.world.shop.window.cboRO.ListCount(), 2);
         }},
        {"ChoosingAnEmployee",
         {"Sub frmLodrin!grdEmp_Click()", "Sub frmLodrin!GetHistory()",
          "Sub frmLodrin!GetHistoryView()", "Sub frmLodrin!GetLast10()"},
         [](ShopWorld& world) {
             OneOrderAndTwoPeople(world);
             world.Given({ClosedJob(8, 1001, {kToday}), ClosedJob(8, 1002, {kToday})});
         },
         [](ShopWorld& world) {
             world.Open();
             world.shop.window.grdEmp.SetRow(1);
         },
         [](ShopWorld& world) { lodrin::grdEmp_Click(world.shop); },
         [](Scene& scene) {
             EXPECT_EQ(scene.world.shop.state.currentEmployee, 8);
             scene.disk.beforeCall = nullptr;
             lodrin::grdEmp_Click(scene.world.shop);
             EXPECT_EQ(scene.world.shop.window.grdDaily.RowCount(), 2);
             EXPECT_EQ(scene.world.shop.window.lstHistory.ListCount(), 2);
         }},
        {"LaborTypeDialog",
         {"Sub frmGLSelect!Form_Load()"},
         [](ShopWorld& world) {
             world.GivenNo("Status").Given({LedgerAccount("BL", "Body", true)});
         },
         [](ShopWorld& world) { world.Open(); },
         [](ShopWorld& world) { world.shop.forms.glSelect.Form_Load(world.shop); },
         [](Scene& scene) {
             lodrin::frmGLSelect& form = scene.world.shop.forms.glSelect;
             EXPECT_EQ(form.cmdExit.enabled,
                       form.lstGLCodes.ListIndex() >= 0 && form.lstDepartments.ListIndex() >= 0);
             scene.disk.beforeCall = nullptr;
             form.Form_Load(scene.world.shop);
             EXPECT_TRUE(form.cmdExit.enabled);
             EXPECT_EQ(form.lstDepartments.ListCount(), 3);
         }},
    };
}

// Of the first job of a day, whose start stores so many sets.
Procedure StartOfAJob(const char* name, void (*given)(ShopWorld& world), std::size_t sets)
{
    return {name,
            {"Sub frmLodrin!StartJob()", "Sub frmGLSelect!Form_Load()"},
            given,
            BobStandsOnTheBoard,
            BobStartsHisJob,
            [](Scene& scene) {
                EXPECT_EQ(scene.Stored("LDHistory").size() + scene.Stored("LDTotals").size(), 0U);
                EXPECT_EQ(scene.Stored("LDEmp").size(), 2U);
                EXPECT_FALSE(scene.world.shop.window.grdEmp.allowEdit);
            },
            {.asksPIN = true, .tidyings = kToldPerSet * sets}};
}

std::vector<Procedure> Jobs()
{
    return {
        StartOfAJob("FirstJobOfTheDay", OneOrderAndTwoPeople, 5),
        StartOfAJob("DayOpenedAgain", BobHasEndedHisDay, 6),
        {"JobChange",
         And({"Sub frmLodrin!StartJob()", "Sub frmGLSelect!Form_Load()"}, kClosingAJob),
         BobHasWorkedSinceEight,
         BobStandsOnTheBoard,
         BobStartsHisJob,
         [](Scene& scene) {
             NothingIsPostedTwice(scene);
             EXPECT_FALSE(scene.world.shop.window.grdEmp.allowEdit);
             EXPECT_EQ(scene.Stored("LDEmp").size(), 2U);
         },
         {.asksPIN = true, .tidyings = kToldPerSet * 8 + kToldPerNumber * 2}},
        {"Break",
         And({"Sub frmLodrin!cmdBreak_Click()"}, kClosingAJob),
         BobHasWorkedSinceEight,
         BobStandsOnTheBoard,
         [](ShopWorld& world) {
             world.fakes.prompts.TakeAnyInput("1234");
             world.dialogs.ConfirmProgress();
             world.At("09:00 AM").GoesOnBreak();
         },
         [](Scene& scene) {
             NothingIsPostedTwice(scene);
             EXPECT_TRUE(scene.Stored("LDEmp").at(0)["StartDay"].IsDate());
         },
         {.asksPIN = true,
          .showsProgress = true,
          .tidyings = kToldPerSet * 4 + kToldPerNumber * 2}},
        {"EndOfTheDay",
         And({"Sub frmLodrin!cmdEndDay_Click()"}, kClosingAJob),
         BobHasWorkedSinceEight,
         BobStandsOnTheBoard,
         [](ShopWorld& world) {
             world.fakes.prompts.TakeAnyInput("1234");
             world.dialogs.ConfirmProgress();
             world.At("09:00 AM").EndsDay();
         },
         [](Scene& scene) {
             NothingIsPostedTwice(scene);
             EXPECT_LE(scene.Stored("LDTotals").size(), 1U);
         },
         {.asksPIN = true,
          .showsProgress = true,
          .tidyings = kToldPerSet * 5 + kToldPerNumber * 3}},
        {"LastMinute",
         And({"Sub frmLodrin!cmdEndDay_Click()", "Sub frmLodrin!Timer1_Timer()"}, kClosingAJob),
         BobHasWorkedSinceEight,
         BobStandsOnTheBoard,
         [](ShopWorld& world) { world.At("11:59 PM").Ticks(); },
         [](Scene& scene) {
             NothingIsPostedTwice(scene, 15.98);
             EXPECT_LE(scene.Stored("LDTotals").size(), 1U);
             EXPECT_FALSE(scene.world.shop.state.automaticEndOfDay);
         },
         {.tidyings = kToldPerSet * 5 + kToldPerNumber * 3}},
        {"LastMinuteWithoutARecord",
         And({"Sub frmLodrin!cmdEndDay_Click()", "Sub frmLodrin!Timer1_Timer()"}, kClosingAJob),
         BobHasWorkedSinceEight,
         [](ShopWorld& world) { world.Select("Jones, Bob").Loses("LDEmp", "EmpID = 8"); },
         [](ShopWorld& world) {
             world.At("11:59 PM").Ticks();
             world.At("11:59:01 PM").Ticks();
         },
         [](Scene& scene) {
             NothingIsPostedTwice(scene, 15.98);
             EXPECT_EQ(scene.Stored("LDHistory").size(), 1U);
         },
         // The second time finds it stored already.
         {.tidyings = kToldPerSet * 4 + kToldPerNumber * 3}},
    };
}

std::vector<Procedure> Wordings()
{
    return {
        {"StatusDescriptions",
         {"Sub frmStatus!InitializeGrid()", "Sub frmStatus!QueryGrid()", "Sub frmStatus!GetView()",
          "Sub frmStatus!StoreDescription()", "Sub frmStatus!cmdExit_Click()"},
         [](ShopWorld& world) {
             world.GivenNo("Status").Given({LaborType("BL", "Body"),
                                            LedgerAccount("BL", "Body Labor", true),
                                            LedgerAccount("FL", "Frame Labor", true)});
         },
         [](ShopWorld& world) { world.Open(); },
         [](ShopWorld& world) {
             world.dialogs.whileStatusIsOpen = [](lodrin::Shop& on) {
                 lodrin::frmStatus& form = *on.forms.status;
                 if (form.grdStatus.RowCount() > 0) (void)form.StoreDescription(on, 1, "Metal");
             };
             lodrin::mnuSetupItems_Click(world.shop, 0);
         },
         [](Scene& scene) {
             const std::vector<Record> rows = scene.Stored("Status");
             EXPECT_EQ(CountOf(rows, "GLType", "BL"), 1);
             EXPECT_LE(CountOf(rows, "GLType", "FL"), 1);
             // The next opening adds what is missing.
             scene.disk.beforeCall = nullptr;
             lodrin::mnuSetupItems_Click(scene.world.shop, 0);
             EXPECT_EQ(CountOf(scene.Stored("Status"), "GLType", "FL"), 1);
         },
         {.tidyings = kToldPerSet * 2 + kToldPerNumber}},
    };
}

std::vector<Procedure> Openings()
{
    return {
        {"SyncEmployees",
         {"Sub frmLodrin!SyncEmployees()"},
         [](ShopWorld& world) {
             world.Given({Employee("Smith, Ann", 7), Employee("Jones, Bob", 8).Without("LDEmp"),
                          Employee("Adams, Zoe", 9).With("Name", "Adam, Zoe"),
                          Employee("Gone, Guy", 10).Without("Profile")});
         },
         [](ShopWorld& world) { world.Open(); },
         [](ShopWorld& world) { lodrin::mnuSyncEmp_Click(world.shop); },
         [](Scene& scene) {
             const std::vector<Record> people = scene.Stored("LDEmp");
             EXPECT_EQ(CountOf(people, "EmpID", 7), 1);
             EXPECT_EQ(CountOf(people, "EmpID", 9), 1);
             EXPECT_LE(CountOf(people, "EmpID", 8), 1);
             EXPECT_FALSE(scene.world.dialogs.procMsgVisible);
             EXPECT_EQ(scene.world.fakes.prompts.boxes.size(), 1U);
         },
         {.tidyings = kToldPerSet * 3 + kToldPerNumber * 1}},
        {"OpeningAfterAForgottenDay",
         kOpening,
         ForgottenFriday,
         nullptr,
         [](ShopWorld& world) { lodrin::DBOpen(world.shop); },
         FridaysJobIsNeitherLostNorDoubled,
         {.tidyings = kToldPerSet * 5 + kToldPerNumber * 4}},
        {"FirstStartInANewShop",
         kOpening,
         nullptr,
         nullptr,
         [](ShopWorld& world) { lodrin::Form_Load(world.shop); },
         [](Scene& scene) {
             EXPECT_TRUE(scene.world.shop.state.firstActivation);
             EXPECT_EQ(scene.world.shop.window.Timer1.interval, 1000);
             EXPECT_FALSE(scene.world.dialogs.procMsgVisible);
             // The next start makes what is still missing, or finds it.
             scene.disk.beforeCall = nullptr;
             lodrin::BuildLD(scene.world.shop, "C:\\Shop");
             dao::Database database = scene.world.engine.DefaultWorkspace().OpenDatabase(kDatabase);
             EXPECT_EQ(database.TableDef("LDEmp").Fields().size(), 12U);
             EXPECT_EQ(database.TableDef("LDTotals").Fields().size(), 8U);
             EXPECT_EQ(database.TableDef("LDHistory").Fields().size(), 11U);
             EXPECT_EQ(database.TableDef("Status").Fields().size(), 5U);
         },
         {.tidyings = kToldPerDesign * 4, .closings = 8}},
    };
}

}  // namespace

std::vector<Procedure> SweptProcedures()
{
    std::vector<Procedure> all = ListsAndDialogs();
    for (const std::vector<Procedure>& more : {Jobs(), Wordings(), Openings()})
        all.insert(all.end(), more.begin(), more.end());
    return all;
}

}  // namespace tests
