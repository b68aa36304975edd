// SPDX-License-Identifier: Apache-2.0
#include "app/frmLodrin.h"

#include "base/Calendar.h"
#include "base/NumberedError.h"
#include "data/DBOpen.h"
#include "data/Tables.h"
#include "tests/support/ShopFixture.h"
#include "tests/support/StartTexts.h"

namespace lodrin {
namespace {

class frmLodrinTest : public tests::ShopFixture {
protected:
    frmLodrinTest()
    {
        fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
        fakes.files.Write("C:/Shop/Kelvaro.mdb", "");
    }

    void Load()
    {
        fakes.prompts.Expect(tests::kNothingToSynchronise);
        Form_Load(shop);
    }
};

TEST_F(frmLodrinTest, TheLoadStartsTheTimerAndShowsTheDateWithoutTheTime)
{
    Load();
    EXPECT_EQ(shop.window.Timer1.interval, 1000);
    EXPECT_EQ(shop.window.lblDate.Caption(), "03/15/2004");
}

TEST_F(frmLodrinTest, TheLoadFillsTheListsAndOpensTheStatusDescriptions)
{
    Given({tests::Employee("Jones, Bob", 8), tests::RepairOrder(1001)});
    Load();
    EXPECT_EQ(shop.window.grdEmp.RowCount(), 1);
    EXPECT_EQ(shop.window.cboRO.ListCount(), 1);
    EXPECT_EQ(shop.state.rsStatus[Status::GLType].Value(), base::Value("BL"));
    EXPECT_TRUE(shop.state.firstActivation);
    EXPECT_EQ(Reports(), std::vector<std::string>{});
}

TEST_F(frmLodrinTest, AMissingRecordInTheLoadIsOneLineInTheLogAndNoBox)
{
    shop.window.lblDate.changed = [] { throw base::NumberedError(3021); };
    Load();
    EXPECT_EQ(fakes.files.Read("/Lodrin.Log"),
              "\"Error 3021 in Sub frmLodrin!Form_Load()Error = 'No current record.'"
              "3/15/2004:12:00:00 PM\"\r\n");
    EXPECT_EQ(fakes.prompts.boxes.size(), 1U);  // that there was nothing to synchronise
    EXPECT_TRUE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, WithoutStatusDescriptionsTheWarningComesOnceAfterTheListsAreFilled)
{
    Given({tests::Employee("Jones, Bob", 8), tests::RepairOrder(1001)});
    GivenNo("Status");
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    fakes.prompts.Expect(tests::kNoDescriptions);
    fakes.prompts.whileBoxIsOpen = [this](const platform::Box& box) {
        if (box.text != tests::kNoDescriptions) return;
        EXPECT_TRUE(shop.state.database.IsSet());
        EXPECT_EQ(shop.window.grdEmp.RowCount(), 1);
        EXPECT_EQ(shop.window.cboRO.ListCount(), 1);
    };
    Form_Load(shop);
    EXPECT_EQ(fakes.prompts.boxes.back(),
              (platform::Box{.text = tests::kNoDescriptions, .title = "Lodrin"}));
    EXPECT_EQ(fakes.prompts.boxes.size(), 2U);
    EXPECT_TRUE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, WithoutTheDatabaseTheListsAreEmptyAndTheWarningIsShown)
{
    disk.Remove(DatabasePath());
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    fakes.prompts.Expect(tests::kNoDescriptions);
    Form_Load(shop);
    EXPECT_EQ(shop.window.grdEmp.RowCount(), 0);
    EXPECT_EQ(shop.window.cboRO.ListCount(), 0);
    EXPECT_EQ(Reports().front(), "3024 Sub frmLodrin!DBOpen()");
    EXPECT_EQ(Reports().back(), "91 Sub frmLodrin!Form_Load()");
    EXPECT_TRUE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, TheFirstActivationUnloadsTheSplashAndShowsThePath)
{
    shop.state.firstActivation = true;
    dialogs.splashVisible = true;
    Form_Activate(shop);
    EXPECT_FALSE(dialogs.splashVisible);
    EXPECT_EQ(shop.window.stsLD.Caption(), "Database Path: C:\\Shop");
    EXPECT_FALSE(shop.state.firstActivation);
}

TEST_F(frmLodrinTest, LaterActivationsDoNothing)
{
    dialogs.splashVisible = true;
    Form_Activate(shop);
    EXPECT_TRUE(dialogs.splashVisible);
    EXPECT_EQ(shop.window.stsLD.Caption(), "");
}

TEST_F(frmLodrinTest, EveryTickShowsTheTimeBehindFiveBlanks)
{
    EXPECT_EQ(shop.window.caption.Caption(), "Kelvaro Lodrin");
    fakes.clock.Set(base::DateFrom({2004, 3, 15, 17, 55, 3}));
    Timer1_Timer(shop);
    EXPECT_EQ(shop.window.caption.Caption(), "Lodrin -      5:55:03 PM");
    fakes.clock.Advance(1);
    Timer1_Timer(shop);
    EXPECT_EQ(shop.window.caption.Caption(), "Lodrin -      5:55:04 PM");
}

constexpr const char* kUnknownOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

// Ann, Bob and Cy have clocked in at eight on an order each; Bob is chosen, and the evening comes.
class LastMinuteTest : public frmLodrinTest {
protected:
    LastMinuteTest()
    {
        using tests::Employee;
        Given({Employee("Able, Ann", 7), Employee("Baker, Bob", 8), Employee("Clark, Cy", 9),
               tests::RepairOrder(1001), tests::RepairOrder(1002), tests::RepairOrder(1003)});
        At("08:00 AM").Select("Able, Ann").Picks("BL", "Body").Starts(1001);
        Select("Clark, Cy").Picks("RL", "Paint").Starts(1003);
        Select("Baker, Bob").Picks("FL", "Body").Starts(1002);
    }
    std::string EndOf(const char* employee) { return EmployeeRecord(employee).Text("EndDay"); }
    // Takes his job off him behind the program's back, so that his day cannot be ended.
    void LoseBobsOrder() { shop.window.grdEmp.SetCell(LDEmp::WOID.column, base::Null{}); }
};

TEST_F(LastMinuteTest, TheChosenEmployeesDayIsEndedWithoutAnyQuestion)
{
    const std::size_t asked = fakes.prompts.Transcript().size();
    At("11:59 PM").Ticks();
    EXPECT_EQ(EndOf("Baker, Bob"), "11:59:00 PM");
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0].Text("Hrs"), "15.98");
    EXPECT_EQ(LaborLines().size(), 1U);
    ASSERT_EQ(Totals().size(), 1U);
    EXPECT_EQ(Totals()[0].Text("TotHrs"), "15.98");
    EXPECT_EQ(fakes.prompts.Transcript().size(), asked);
    EXPECT_EQ(dialogs.progresses, 0);
    EXPECT_EQ(Reports(), std::vector<std::string>{});
}

TEST_F(LastMinuteTest, AnotherEmployeeWhoIsNotChosenIsNotEnded)
{
    const tests::Record ann = EmployeeRecord("Able, Ann");
    const tests::Record cy = EmployeeRecord("Clark, Cy");
    At("11:59 PM").Ticks();
    EXPECT_EQ(EmployeeRecord("Able, Ann"), ann);
    EXPECT_EQ(EmployeeRecord("Clark, Cy"), cy);
}

TEST_F(LastMinuteTest, TheLastSecondBeforeItDoesNothing)
{
    const tests::Contents before = Stored();
    At("11:58:59 PM").Ticks();
    EXPECT_EQ(Stored(), before);
}

TEST_F(LastMinuteTest, MidnightDoesNothing)
{
    const tests::Contents before = Stored();
    At("12:00:00 AM").Ticks();
    EXPECT_EQ(Stored(), before);
    On("03/16/2004").Ticks();
    EXPECT_EQ(Stored(), before);
}

TEST_F(LastMinuteTest, TheWholeMinuteCounts)
{
    At("11:59:59 PM").Ticks();
    EXPECT_EQ(EndOf("Baker, Bob"), "11:59:00 PM");
}

TEST_F(LastMinuteTest, LaterTicksOfTheMinuteLeaveTheEndedDayAlone)
{
    At("11:59 PM").Ticks();
    const tests::Contents before = Stored();
    for (int second = 1; second < 60; ++second) {
        fakes.clock.Advance(1);
        Ticks();
    }
    EXPECT_EQ(Stored(), before);
}

TEST_F(LastMinuteTest, EmployeeChosenWithinTheMinuteIsEndedByTheNextTick)
{
    At("11:59 PM").Ticks();
    Select("Clark, Cy").At("11:59:30 PM").Ticks();
    EXPECT_EQ(EndOf("Clark, Cy"), "11:59:00 PM");
    EXPECT_EQ(EndOf("Able, Ann"), "");
    EXPECT_EQ(Totals().size(), 2U);
}

TEST_F(LastMinuteTest, ADayEndedByHandStaysAsItIs)
{
    At("05:00 PM").IsSure().ConfirmsProgress().EndsDay();
    const tests::Contents before = Stored();
    At("11:59 PM").Ticks();
    EXPECT_EQ(Stored(), before);
}

TEST_F(LastMinuteTest, ADayThatWasNotStartedIsNotEnded)
{
    Given({tests::Employee("Drake, Di", 10)});
    Open().Select("Drake, Di");
    At("11:59 PM").Ticks();
    EXPECT_EQ(EndOf("Drake, Di"), "");
    EXPECT_TRUE(Totals().empty());
}

TEST_F(LastMinuteTest, WhileNobodyIsChosenNobodyIsEnded)
{
    Open();
    const tests::Contents before = Stored();
    At("11:59 PM").Ticks();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Reports(), std::vector<std::string>{});
}

TEST_F(LastMinuteTest, AnEmptyBoardIsLeftAlone)
{
    GivenNo("LDEmp").Open();
    At("11:59 PM").Ticks();
    EXPECT_EQ(Reports(), std::vector<std::string>{});
}

// Nobody is there to be asked, but the box waits for somebody: once per row of the board, and again
// at the next second.
TEST_F(LastMinuteTest, ADayThatCannotBeEndedIsToldOncePerRowAndAgainAtTheNextTick)
{
    LoseBobsOrder();
    const tests::Contents before = Stored();
    for (int row = 0; row < 3; ++row)
        fakes.prompts.Expect(kUnknownOrder);
    At("11:59 PM").Ticks();
    EXPECT_EQ(fakes.prompts.Pending(), std::vector<std::string>{});
    for (int row = 0; row < 3; ++row)
        fakes.prompts.Expect(kUnknownOrder);
    At("11:59:01 PM").Ticks();
    EXPECT_EQ(fakes.prompts.Pending(), std::vector<std::string>{});
    EXPECT_EQ(Stored(), before);
}

// His job stays on the board, and the minute comes round once per row and second.
TEST_F(LastMinuteTest, AJobOfAnEmployeeWithoutARecordIsPostedOnceInTheWholeMinute)
{
    Loses("LDEmp", "EmpID = 8");
    At("11:59 PM").Ticks();
    At("11:59:01 PM").Ticks();
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(LaborLines().size(), 1U);
    EXPECT_EQ(Order(1002).Text("FrameWorked"), "15.98");
    EXPECT_EQ(Board("Baker, Bob", LDEmp::WONumber), "1002");
    EXPECT_EQ(Totals().size(), 1U);
}

TEST_F(LastMinuteTest, AJobThatHeClosedHimselfWithoutARecordIsNotPostedAgain)
{
    Loses("LDEmp", "EmpID = 8");
    At("05:00 PM").IsSure().ConfirmsProgress().EndsDay();
    At("11:59 PM").Ticks();
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0].Text("JobEnd"), "5:00:00 PM");
    EXPECT_EQ(LaborLines().size(), 1U);
}

TEST_F(LastMinuteTest, AJobThatABreakClosedWithoutARecordIsNotPostedAgain)
{
    Loses("LDEmp", "EmpID = 8");
    At("05:00 PM").ConfirmsProgress().GoesOnBreak();
    At("11:59 PM").Ticks();
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0].Text("JobEnd"), "5:00:00 PM");
    EXPECT_EQ(LaborLines().size(), 1U);
}

TEST_F(LastMinuteTest, AJobThatAJobChangeClosedWithoutARecordIsNotPostedAgain)
{
    Loses("LDEmp", "EmpID = 8");
    At("05:00 PM").Picks("BL", "Body").Starts(1001);
    At("11:59 PM").Ticks();
    ASSERT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(Jobs()[0].Text("JobEnd"), "5:00:00 PM");
    EXPECT_EQ(LaborLines().size(), 1U);
}

// He closes it, somebody sets the clock back, and he begins on the same order in the same minute.
TEST_F(LastMinuteTest, AJobThatBeganAnewInTheSameMinuteIsPostedAsWell)
{
    At("09:00 AM").ConfirmsProgress().GoesOnBreak();
    At("08:00 AM").Picks("FL", "Body").Starts(1002);
    At("11:59 PM").Ticks();
    EXPECT_EQ(Jobs().size(), 2U);
    EXPECT_EQ(LaborLines().size(), 2U);
}

TEST_F(LastMinuteTest, AnotherDatabaseHasJobsOfItsOwn)
{
    Loses("LDEmp", "EmpID = 8");
    At("05:00 PM").IsSure().ConfirmsProgress().EndsDay();
    Given({tests::ShopEntry({{"LDEmp",
                              {{"EmpID", 8},
                               {"Name", "Baker, Bob"},
                               {"StartDay", *base::ReadDate("08:00 AM")},
                               {"WorkDate", *base::ReadDate("03/15/2004")},
                               {"StartJob", *base::ReadDate("08:00 AM")},
                               {"WO#", 1002},
                               {"WOID", Order(1002)["EntryNumber"]},
                               {"Customer", "Evans, Brian"},
                               {"GLType", "FL"}}}})});
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    DBOpen(shop);
    Select("Baker, Bob").At("11:59 PM").Ticks();
    EXPECT_EQ(Jobs().size(), 2U);
}

// Also when both have worked on the same order since the same minute.
TEST_F(LastMinuteTest, EachEmployeeWithoutARecordHasHisJobPosted)
{
    At("08:00 AM").Select("Able, Ann").Picks("FL", "Body").Starts(1002).Select("Baker, Bob");
    Loses("LDEmp", "EmpID = 8").Loses("LDEmp", "EmpID = 7");
    At("11:59 PM").Ticks();
    Select("Able, Ann").Ticks();
    Select("Baker, Bob").Ticks();
    EXPECT_EQ(Jobs().size(), 2U);
    EXPECT_EQ(LaborLines().size(), 2U);
}

TEST_F(LastMinuteTest, AnswersAreWantedAgainAfterTheUnattendedEnd)
{
    At("11:59 PM").Ticks();
    EXPECT_FALSE(shop.state.automaticEndOfDay);
    Select("Able, Ann").IsSure(platform::Answer::No).EndsDay();
    EXPECT_EQ(EndOf("Able, Ann"), "");
}

// A log that cannot be written fails in the trap itself, and that leaves every procedure.
TEST_F(LastMinuteTest, AnswersAreWantedAgainAlsoWhenTheEndOfDayFails)
{
    shop.state.employees = dao::Recordset();
    fakes.files.RefuseWrites("/Lodrin.Log", 75);
    At("11:59 PM");
    EXPECT_THROW(Timer1_Timer(shop), base::NumberedError);
    EXPECT_FALSE(shop.state.automaticEndOfDay);
}

TEST_F(LastMinuteTest, AnOpenDialogSuppressesTheUnattendedEnd)
{
    dialogs.whileProgressIsOpen = [this](Shop& /*on*/) { At("11:59 PM").Ticks(); };
    const tests::Contents before = Stored();
    IsSure().CancelsProgress().EndsDay();
    EXPECT_EQ(Stored(), before);
    At("12:00 AM").Ticks();
    EXPECT_EQ(Stored(), before);
}

TEST_F(frmLodrinTest, BothExitsUnloadTheMainWindow)
{
    dialogs.mainVisible = true;
    cmdExit_Click(shop);
    EXPECT_FALSE(dialogs.mainVisible);
    dialogs.mainVisible = true;
    picExit_Click(shop);
    EXPECT_FALSE(dialogs.mainVisible);
}

TEST_F(frmLodrinTest, NothingIsWrittenWhenTheWindowCloses)
{
    Load();
    const tests::Contents before = Stored();
    Form_QueryUnload(shop);
    cmdExit_Click(shop);
    EXPECT_EQ(Stored(), before);
}

}  // namespace
}  // namespace lodrin
