// SPDX-License-Identifier: Apache-2.0
// EngineSweepTest: each procedure, while the engine's n-th call to the disk fails, for every n.
#include "app/Dispatch.h"
#include "app/frmLodrin.h"
#include "base/Calendar.h"
#include "base/NumberedError.h"
#include "data/DBOpen.h"
#include "data/SyncEmployees.h"
#include "data/modBuildLD.h"
#include "floor/VerifyPIN.h"
#include "floor/cboRO.h"
#include "floor/grdEmp.h"
#include "jet/io/MemoryFile.h"
#include "setup/mnuSetup.h"
#include "tests/app/SilentCalls.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/WatchedFileSystem.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace tests;

constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";
// Of so many files one is looked through; of so many calls one fails while there is no log.
constexpr std::size_t kChecked = 5, kWithoutLog = 5;
constexpr double kToday = 38061, kFriday = 38058;

// The shop on a disk one call of which fails.
struct Scene {
    explicit Scene(const std::vector<std::byte>& content)
    {
        (void)memory.Create(kDatabase);
        memory.Content(kDatabase) = content;
        world.fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
        world.fakes.files.Write(kDatabase, "");
        world.fakes.prompts.TakeAnyBox();
    }
    ~Scene() { disk.beforeCall = nullptr; }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    void FailAt(std::size_t call)
    {
        calls = 0;
        disk.beforeCall = [this, call] {
            if (calls++ == call) throw base::NumberedError(3043).At("planned failure");
        };
    }
    // Rows as another program finds them.
    [[nodiscard]] std::vector<Record> Stored(const std::string& table)
    {
        dao::Database found = reader.DefaultWorkspace().OpenDatabase(kDatabase);
        dao::Recordset rows = found.OpenRecordset(table);
        return RowsOf(rows);
    }

    std::size_t calls = 0;
    jet::io::MemoryFileSystem memory;
    WatchedFileSystem disk{memory};
    ShopWorld world{disk};
    dao::DBEngine reader{{.now = [this] { return world.fakes.clock.Now(); }}, memory};
};

// Which parts of a procedure keep their failures to themselves, and how many calls the engine makes
// that nothing depends on: around each set of pages that is written, around each number that is
// drawn, behind each change of the design, and when a database closes.
constexpr std::size_t kToldPerSet = 5, kToldPerNumber = 3, kToldPerDesign = 2;
struct Silent {
    bool asksPIN = false, showsProgress = false;
    std::size_t tidyings = 0, closings = 0;
    friend bool operator==(const Silent&, const Silent&) = default;
};

void PrintTo(const Silent& silent, std::ostream* out)
{
    *out << "PIN " << silent.asksPIN << ", progress " << silent.showsProgress << ", tidyings "
         << silent.tidyings << ", closings " << silent.closings;
}

struct Procedure {
    std::string name;
    std::set<std::string> locations;         // where a failure in it may be reported
    std::function<void(ShopWorld&)> given;   // rows in the file
    std::function<void(ShopWorld&)> before;  // what was done before, without a failure
    std::function<void(ShopWorld&)> run;
    std::function<void(Scene&)> holds;  // whatever failed
    Silent silent = {};
};

void PrintTo(const Procedure& each, std::ostream* out)
{
    *out << each.name;
}

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

std::vector<Procedure> Procedures()
{
    std::vector<Procedure> all = ListsAndDialogs();
    for (const std::vector<Procedure>& more : {Jobs(), Wordings(), Openings()})
        all.insert(all.end(), more.begin(), more.end());
    return all;
}

class EngineSweepTest : public ::testing::TestWithParam<Procedure> {
protected:
    static std::vector<std::byte> Content()
    {
        jet::io::MemoryFileSystem disk;
        ShopWorld world(disk);
        if (GetParam().given) {
            world.MakeDatabase();
            GetParam().given(world);
        } else {
            world.MakeManagementDatabase();
        }
        return disk.Content(kDatabase);
    }

    static void Prepare(Scene& scene)
    {
        if (GetParam().before) GetParam().before(scene.world);
    }

    // The procedure when nothing fails: what the file holds before and afterwards, and who would
    // keep silent about the failure of each call.
    struct Undisturbed {
        Contents before, after;
        std::vector<Silence> calls;
    };
    static Undisturbed RunUndisturbed(const std::vector<std::byte>& content)
    {
        Undisturbed undisturbed;
        Scene unchanged(content);
        Prepare(unchanged);
        undisturbed.before = ShopWorld(unchanged.memory).Stored();
        Scene scene(content);
        Prepare(scene);
        undisturbed.calls = CallsIn(scene);
        undisturbed.after = ShopWorld(scene.memory).Stored();
        return undisturbed;
    }

    // Runs the procedure. What it calls until the PIN is asked for belongs to the check.
    static std::vector<Silence> CallsIn(Scene& scene)
    {
        const auto& inputs = scene.world.fakes.prompts.inputs;
        const bool& progress = scene.world.dialogs.progressVisible;
        std::vector<DiskCall> calls;
        std::size_t untilPIN = 0;
        scene.disk.beforeCall = [&] {
            calls.push_back({scene.disk.call, progress ? Silence::Progress : Silence::None});
            if (inputs.empty()) untilPIN = calls.size();
        };
        GetParam().run(scene.world);
        scene.disk.beforeCall = nullptr;
        for (std::size_t i = 0; i < untilPIN && !inputs.empty(); ++i)
            calls[i].part = Silence::PINCheck;
        return SilencesOf(calls);
    }

    static Silent CountOf(const std::vector<Silence>& calls)
    {
        const auto count = [&](Silence silence) {
            return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), silence));
        };
        return {.asksPIN = count(Silence::PINCheck) > 0,
                .showsProgress = count(Silence::Progress) > 0,
                .tidyings = count(Silence::Tidying),
                .closings = count(Silence::Closing)};
    }

    // Plays the procedure with that call failing.
    static void Play(const std::vector<std::byte>& content, std::size_t call,
                     const Undisturbed& undisturbed)
    {
        Scene scene(content);
        Prepare(scene);
        scene.FailAt(call);
        EXPECT_NO_THROW(GetParam().run(scene.world));
        EXPECT_GT(scene.calls, call);
        const Silence silence = undisturbed.calls[call];
        EXPECT_EQ(Failures(scene.world.Reports()), silence == Silence::None ? 1U : 0U);
        if (silence == Silence::Tidying || silence == Silence::Closing) {
            EXPECT_EQ(ShopWorld(scene.memory).Stored(), undisturbed.after);
        }
        if (silence == Silence::PINCheck) {
            EXPECT_EQ(ShopWorld(scene.memory).Stored(), undisturbed.before);
        }
        GetParam().holds(scene);
        scene.disk.beforeCall = nullptr;
        if (call % kChecked == 0) {
            EXPECT_CLEAN(scene.memory, kDatabase);
        }
    }

    // How often the failing call was reported. Whatever is reported stands under a name that
    // belongs to the procedure.
    static std::size_t Failures(const std::vector<std::string>& reports)
    {
        std::size_t failures = 0;
        for (const std::string& report : reports) {
            const std::string location = report.substr(report.find(' ') + 1);
            EXPECT_EQ(GetParam().locations.count(location), 1U) << report;
            if (report.rfind("3043 ", 0) == 0) ++failures;
        }
        return failures;
    }

    // Runs the procedure as an event; true when the program ended in it.
    static bool EndsIn(Scene& scene)
    {
        try {
            lodrin::DispatchAlways(scene.world.shop,
                                   [&](lodrin::Shop&) { GetParam().run(scene.world); });
        } catch (const platform::ProgramEnded& end) {
            EXPECT_EQ(end.exitCode, 1);
            return true;
        }
        return false;
    }
};

INSTANTIATE_TEST_SUITE_P(Procedures, EngineSweepTest, ::testing::ValuesIn(Procedures()),
                         [](const auto& each) { return each.param.name; });

TEST_P(EngineSweepTest, WhicheverCallFailsNothingEscapesAndAStatementThatReportsDoesSoOnce)
{
    const std::vector<std::byte> content = Content();
    const Undisturbed undisturbed = RunUndisturbed(content);
    EXPECT_EQ(CountOf(undisturbed.calls), GetParam().silent);
    EXPECT_FALSE(undisturbed.calls.empty());
    for (std::size_t call = 0; call < undisturbed.calls.size() && !HasFailure(); ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        Play(content, call, undisturbed);
    }
    RecordProperty("calls", static_cast<int>(undisturbed.calls.size()));
}

// The trap's own failure leaves every procedure: the platform tells of it, and the program is over.
TEST_P(EngineSweepTest, WithoutALogTheProgramEndsAndTheFileStaysSound)
{
    const std::vector<std::byte> content = Content();
    std::size_t ends = 0, call = 0;
    for (bool failed = true; failed && !HasFailure(); call += kWithoutLog) {
        SCOPED_TRACE("call " + std::to_string(call));
        Scene scene(content);
        Prepare(scene);
        scene.world.fakes.files.RefuseWrites("/Lodrin.Log", 75);
        scene.FailAt(call);
        const bool ended = EndsIn(scene);
        failed = scene.calls > call;
        scene.disk.beforeCall = nullptr;
        ends += ended ? 1 : 0;
        EXPECT_TRUE(scene.world.Reports().empty());
        EXPECT_CLEAN(scene.memory, kDatabase);
        if (ended) {
            EXPECT_EQ(scene.world.fakes.prompts.boxes.back(),
                      (platform::Box{.text = "Run-time error '75':\r\n\r\nPath/File access error",
                                     .title = "Lodrin",
                                     .icon = platform::Icon::Critical}));
        }
    }
    // The PIN check alone reports nothing, so it does not miss the log.
    EXPECT_EQ(ends > 0, !GetParam().locations.empty());
}

}  // namespace
