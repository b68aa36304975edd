// SPDX-License-Identifier: Apache-2.0
// WorkingDayTest: the whole program through its real windows, on real files; an independent reader
// looks at what it leaves.
#include "tests/support/MdbExport.h"
#include "tests/support/SampleShopDays.h"
#include "tests/ui/StagedDay.h"

#include <QAction>
#include <QApplication>
#include <QTest>

#include <map>

namespace tests {
namespace {

TEST_F(WorkingDayTest, EveningInTheShopLeavesExactlyItsJobs)
{
    TakeSample("shop");
    if (IsSkipped()) return;
    Start({kEmployeesAdded});

    // Anthony Jones has refinished since 08:23 AM. He turns to the Honda, later to the Hyundai, and
    // comes back to the Honda.
    Choose("Jones, Anthony");
    staged->At("05:30 PM");
    PinAndLabor("0992", "BL", "Paint");
    Type("10125");
    staged->At("06:10 PM");
    PinAndLabor("0992", "RL", "Mechanical");
    Pick("10011  ");
    staged->At("08:00 PM");
    PinAndLabor("0992", "ML", "Paint");
    DoubleClickFirstLastJob("10125   1996 Honda CR-V EX AWD");
    EXPECT_EQ(DailyCell(0, 5), "10011");
    EXPECT_EQ(LabelText("lblJob"), "WO 10125 \u00b7 ML \u00b7 since 08:00 PM \u00b7 "
                                   "1996 Honda CR-V EX AWD \u00b7 Harris, Mary");
    Exit();

    // A number typed without the separator is the one thing that is reported.
    ASSERT_EQ(Log().size(), 1U);
    EXPECT_EQ(Log()[0].rfind("\"Error 5 in Sub frmLodrin!cboRO_KeyUp()", 0), 0U);
    ExpectEvening(sample, File());
}

TEST_F(WorkingDayTest, FirstMorningInANewShopBuildsItsTablesAndKeepsTheRest)
{
    TakeSample("shop-fresh");
    if (IsSkipped()) return;
    Start({kEmployeesAdded, kNoDescriptions});

    Choose("Gomez, Michelle");
    staged->At("07:30 AM");
    PinAndLabor("7802", "FL", "Paint");
    Type("10037");
    staged->At("09:00 AM");
    PinAndLabor("7802", "DL", "Body");
    Pick("10112  ");
    staged->At("10:10 AM");
    PinAndLabor("7802", "BL", "Paint");
    DoubleClickFirstLastJob("10037   2001 Chevrolet Malibu LT");
    Exit();
    ExpectFirstMorning(sample, File());
}

TEST_F(OwnShopTest, MorningOfTwoTechniciansIsStored)
{
    StartNewShop();
    staged->At("08:00 AM");
    Choose("Adams, Al");
    robot.Labor("BL", "Body");
    Type("1001");
    staged->At("08:05 AM");
    Choose("Baker, Bo");
    PinAndLabor("77", "RL", "Paint");
    Pick("1002  ");
    staged->At("10:20 AM");
    Choose("Adams, Al");
    robot.Labor("RL", "Paint");
    Type("1002");
    Exit();

    const std::vector<Record> jobs = Rows("SELECT * FROM LDHistory");
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].Text("EmpID"), "1");
    EXPECT_EQ(jobs[0].Text("WONumb"), "1001");
    EXPECT_EQ(jobs[0].Text("Hrs"), "2.33");
    EXPECT_EQ(jobs[0].Text("GLType"), "BL");
    const std::vector<Record> labor = Rows("SELECT * FROM Labor");
    ASSERT_EQ(labor.size(), 1U);
    EXPECT_EQ(labor[0].Text("WorkOrder"), "1001");
    const std::vector<Record> board = Rows("SELECT * FROM LDEmp ORDER BY Name");
    ASSERT_EQ(board.size(), 2U);
    EXPECT_EQ(board[0].Text("WO#"), "1002");
    EXPECT_EQ(board[0].Text("StartDay"), "8:00:00 AM");
    EXPECT_EQ(board[1].Text("WO#"), "1002");
    EXPECT_EQ(board[1].Text("StartJob"), "8:05:00 AM");
    const std::vector<Record> orders = Rows("SELECT * FROM WorkOrder ORDER BY WorkOrderNumber");
    EXPECT_EQ(orders[0].Text("BLTech"), "1");
    EXPECT_EQ(orders[1].Text("RLTech"), "2");
    EXPECT_EQ(orders[1].Text("BodyWorked"), "2.33") << "closed while the new order was chosen";
}

// The menu by its mnemonics, the wording by typing, Exit by its mnemonic; the main window takes no
// input meanwhile.
TEST_F(OwnShopTest, ShopWordsItsLaborTypesByKeyboardAlone)
{
    if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    StartNewShop();
    staged->shop.window.Timer1.SetInterval(1);
    robot.Then([this](QDialog& window) {
        EXPECT_EQ(window.windowTitle().toStdString(), "Status Descriptions");
        (void)QTest::qWaitForWindowActive(&window);
        // Behind it no click, no tick, and no second window.
        const QString caption = Window().windowTitle();
        staged->At("09:00 AM");
        demo::Find<QPushButton>(Window(), "cmdExit").click();
        demo::Find<QAction>(Window(), "mnuSetupItems").trigger();
        QTest::qWait(50);
        EXPECT_EQ(Window().windowTitle(), caption);
        EXPECT_FALSE(staged->closed);

        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClicks(QApplication::focusWidget(), "P");
        QTest::keyClicks(QApplication::focusWidget(), "aint & polish");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&window] { return !window.isVisible(); }, 2000));
    });
    QWidget& setup = demo::Find<QWidget>(Window(), "mnuSetup");
    QTest::keyClick(&Window(), Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(setup.isVisible());
    QTest::keyClick(&setup, Qt::Key_Down);
    QTest::keyClick(&setup, Qt::Key_Return);
    Exit();

    std::map<std::string, std::string> wordings;
    for (const ExportedRow& row : MdbExport(File(), "Status"))
        wordings[row.at("AcctType") + " " + row.at("GLType") + " " + row.at("GLDesc")] =
            row.at("Description");
    EXPECT_EQ(wordings, (std::map<std::string, std::string>{
                            {"LDStatus BL Body Labor", "Body"},
                            {"LDStatus RL Refinish Labor", "Paint & polish"}}));
}

TEST_F(OwnShopTest, BreakAndEndOfDayThroughTheRealDialogsAreStored)
{
    StartNewShop();
    const auto press = [this](const char* button) {
        QTest::keyClick(&demo::Find<QPushButton>(Window(), button), Qt::Key_Space);
    };
    staged->At("08:00 AM");
    Choose("Baker, Bo");
    PinAndLabor("77", "BL", "Body");
    Type("1001");
    staged->At("10:20 AM");
    robot.Pin("77");
    robot.Progress("In paint");
    press("cmdBreak");
    EXPECT_EQ(LabelText("lblJob"), "Day started 08:00 AM \u00b7 no job open");
    staged->At("10:40 AM");
    PinAndLabor("77", "RL", "Paint");
    Type("1002");
    staged->At("04:30 PM");
    robot.Box("This will close out your time for today.  Are you sure?", QMessageBox::Yes);
    robot.Pin("77");
    robot.Then([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    press("cmdEndDay");
    EXPECT_EQ(LabelText("lblJob"), "Day ended 04:30 PM");
    Exit();

    const std::vector<Record> totals = Rows("SELECT * FROM LDTotals");
    ASSERT_EQ(totals.size(), 1U);
    EXPECT_EQ(totals[0].Text("TotHrs"), "8.5");
    EXPECT_EQ(totals[0].Text("JobCount"), "2");
    EXPECT_EQ(totals[0].Text("JobHrs"), "8.16");
    const std::vector<Record> orders = Rows("SELECT * FROM WorkOrder ORDER BY WorkOrderNumber");
    EXPECT_EQ(orders[0].Text("Progress"), "In paint");
    EXPECT_EQ(orders[0].Text("BodyWorked"), "2.33");
    EXPECT_EQ(orders[1].Text("Progress"), "In paint");
    EXPECT_EQ(orders[1].Text("RefinishWorked"), "5.83");
}

TEST_F(OwnShopTest, WrongPinUnknownOrderAndLeftDialogStoreNothing)
{
    StartNewShop();
    const std::vector<Record> before = Rows("SELECT * FROM LDEmp");
    Choose("Baker, Bo");
    robot.Pin("78");
    robot.Box("Invalid PIN entered");
    Type("1001");
    PinAndLabor("77", "BL", "Body");
    robot.Box(kUnknownOrder);
    Type("4711");
    robot.Pin("77");
    robot.Then([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    Type("1001");
    Exit();
    EXPECT_EQ(Rows("SELECT * FROM LDEmp"), before);
    EXPECT_TRUE(Rows("SELECT * FROM LDHistory").empty());
}

TEST_F(OwnShopTest, SplashGoesAndThePathStandsInTheStatusBar)
{
    StartNewShop();
    EXPECT_THROW((void)demo::Window("frmSplash"), std::logic_error);
    EXPECT_EQ(LabelText("stsLDText"), "Database Path: " + Data().string());
    EXPECT_EQ(LabelText("lblDate"), "12/30/2009");
    EXPECT_EQ(LabelText("lblEmpName"), "Employee Name");
    EXPECT_EQ(staged->shop.state.currentEmployee, -1);
}

TEST_F(OwnShopTest, NoTickComesThroughARealBox)
{
    StartNewShop();
    staged->shop.window.Timer1.SetInterval(1);
    ExpectTitle("Lodrin -      7:00:00 AM");
    Choose("Baker, Bo");
    robot.Then([this](QDialog& prompt) {
        staged->At("09:00 AM");
        QTest::qWait(50);
        EXPECT_EQ(Window().windowTitle().toStdString(), "Lodrin -      7:00:00 AM");
        prompt.reject();
    });
    robot.Box("Invalid PIN entered");
    Type("1001");
    ExpectTitle("Lodrin -      9:00:00 AM");
}

TEST_F(OwnShopTest, NoToTheDateEndsTheProgramBeforeAnyWindow)
{
    staged.emplace(Program(), Data(), base::DateFrom({2009, 12, 30, 7, 0, 0}));
    robot.Box(kTheDate, QMessageBox::No);
    EXPECT_THROW(staged->Start(), platform::ProgramEnded);
    EXPECT_THROW((void)demo::Window("frmLodrin"), std::logic_error);
    EXPECT_THROW((void)demo::Window("frmSplash"), std::logic_error);
}

TEST_F(OwnShopTest, SecondCopyIsToldSoAndEnds)
{
    platform::qt::QtInstance first((Program() / "Lodrin.lock").string());
    ASSERT_FALSE(first.AnotherRuns());
    staged.emplace(Program(), Data(), base::DateFrom({2009, 12, 30, 7, 0, 0}));
    robot.Then([](QDialog& box) {
        EXPECT_EQ(box.windowTitle().toStdString(), "Duplicate Program");
        box.close();
    });
    EXPECT_THROW(staged->Start(), platform::ProgramEnded);
}

}  // namespace
}  // namespace tests
