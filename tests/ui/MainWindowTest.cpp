// SPDX-License-Identifier: Apache-2.0
// Tests of app/ui/frmLodrinView.cpp, app/ui/EventDoor.cpp and app/ui/JobSentence.cpp
#include "app/Dispatch.h"
#include "app/ui/JobSentence.h"
#include "app/ui/frmLodrinView.h"
#include "base/NumberedError.h"
#include "tests/support/ShopFixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <optional>

namespace tests {
namespace {

using lodrin::LDEmp;
using lodrin::ui::EventDoor;
using lodrin::ui::frmLodrinView;

class MainWindowTest : public ShopFixture {
protected:
    void SetUp() override
    {
        Given({Employee("Adams, Al", 1), Employee("Baker, Bo", 2), Employee("Clark, Cy", 3),
               RepairOrder(1001), RepairOrder(1002)});
        window.emplace(shop, EventDoor(shop, [this](int exitCode) { left = exitCode; }));
        Open();
        At("08:00 AM");
        window->show();
        window->activateWindow();
        (void)QTest::qWaitForWindowActive(&*window);
    }
    template <class Widget>
    Widget* Find(const char* name)
    {
        auto* found = window->findChild<Widget*>(name);
        if (found == nullptr) throw std::logic_error(std::string("no control ") + name);
        return found;
    }
    void ClickRow(int row)
    {
        auto* board = Find<QTableView>("grdEmp");
        const QModelIndex cell = board->model()->index(row - 1, LDEmp::Name.column - 1);
        QTest::mouseClick(board->viewport(), Qt::LeftButton, {}, board->visualRect(cell).center());
    }
    void TypeOrder(const char* number)
    {
        auto* box = Find<QComboBox>("cboRO");
        box->setFocus();
        QTest::keyClicks(box, number);
        QTest::keyClick(box, Qt::Key_Return);
    }
    void DoubleClickLastJob(int row)
    {
        auto* list = Find<QListWidget>("lstHistory");
        const QPoint place = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
    }
    std::string LabelText(const char* name) { return Find<QLabel>(name)->text().toStdString(); }

    std::optional<frmLodrinView> window;
    std::optional<int> left;
};

TEST_F(MainWindowTest, EveryControlCarriesItsName)
{
    for (const char* name :
         {"grdEmp", "grdDaily", "lblEmpName", "lblDate", "lblCurrentDate", "cboRO", "lstHistory",
          "cmdBreak", "cmdEndDay", "cmdExit", "stsLD", "mnuFile", "mnuSetup"})
        EXPECT_NE(window->findChild<QWidget*>(name), nullptr) << name;
    for (const char* name : {"mnuFileOpen", "mnuSyncEmp", "mnuSynchRO", "mnuSetupItems"})
        EXPECT_NE(window->findChild<QAction*>(name), nullptr) << name;
    EXPECT_NE(window->findChild<QObject*>("Timer1"), nullptr);
    EXPECT_EQ(window->objectName().toStdString(), "frmLodrin");
}

TEST_F(MainWindowTest, NoContainerBetweenAControlAndTheWindowIsNameless)
{
    for (const char* name : {"grdEmp", "grdDaily", "cboRO", "lstHistory", "cmdExit", "lblEmpName"})
        for (QWidget* above = Find<QWidget>(name); above != nullptr; above = above->parentWidget())
            EXPECT_FALSE(above->objectName().isEmpty()) << "above " << name;
}

TEST_F(MainWindowTest, CaptionsStandAsTheyAre)
{
    EXPECT_EQ(Find<QMenu>("mnuFile")->title().toStdString(), "&File");
    EXPECT_EQ(Find<QMenu>("mnuSetup")->title().toStdString(), "&Setup");
    EXPECT_EQ(Find<QAction>("mnuFileOpen")->text().toStdString(), "&Open");
    EXPECT_EQ(Find<QAction>("mnuSyncEmp")->text().toStdString(), "&Synchronize Employees");
    EXPECT_EQ(Find<QAction>("mnuSynchRO")->text().toStdString(), "Synchronize &RO's");
    EXPECT_EQ(Find<QAction>("mnuSetupItems")->text().toStdString(), "Status Descriptions");
    EXPECT_EQ(Find<QPushButton>("cmdBreak")->text().toStdString(), "Go On Break");
    EXPECT_EQ(Find<QPushButton>("cmdEndDay")->text().toStdString(), "End Day");
    EXPECT_EQ(Find<QPushButton>("cmdExit")->text().toStdString(), "&Exit");
    EXPECT_EQ(Find<QPushButton>("cmdExit")->toolTip().toStdString(), "Exit Time Clock");
    EXPECT_EQ(LabelText("lblCurrentDate"), "Current Date:");
    EXPECT_EQ(LabelText("lblEmpName"), "Employee Name");
    EXPECT_EQ(LabelText("lblDate"), "01/04/01 5:55 PM");
    EXPECT_EQ(window->windowTitle().toStdString(), "Kelvaro Lodrin");
}

TEST_F(MainWindowTest, EveryButtonAndMenuItemCanBeUsed)
{
    for (const char* name : {"cmdBreak", "cmdEndDay", "cmdExit"})
        EXPECT_TRUE(Find<QPushButton>(name)->isEnabled()) << name;
    for (const char* name : {"mnuFileOpen", "mnuSyncEmp", "mnuSynchRO", "mnuSetupItems"})
        EXPECT_TRUE(Find<QAction>(name)->isEnabled()) << name;
}

TEST_F(MainWindowTest, ControlsWithoutACaptionTellTheirNameAndPurpose)
{
    for (const char* name : {"grdEmp", "grdDaily", "cboRO", "lstHistory", "stsLD"}) {
        EXPECT_EQ(Find<QWidget>(name)->accessibleName().toStdString(), name);
        EXPECT_FALSE(Find<QWidget>(name)->accessibleDescription().isEmpty()) << name;
    }
    EXPECT_EQ(Find<QComboBox>("cboRO")->lineEdit()->accessibleName().toStdString(), "cboRO");
    EXPECT_EQ(Find<QLabel>("lblEmpName")->accessibleDescription().toStdString(), "lblEmpName");
}

TEST_F(MainWindowTest, NobodyIsChosenUntilSomebodyClicks)
{
    auto* board = Find<QTableView>("grdEmp");
    Find<QPushButton>("cmdExit")->setFocus();
    board->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(board->hasFocus());
    EXPECT_FALSE(board->currentIndex().isValid());
    EXPECT_FALSE(board->selectionModel()->hasSelection());
    EXPECT_EQ(LabelText("lblEmpName"), "Employee Name");
    EXPECT_EQ(LabelText("lblJob"), "Choose your name on the board.");
    EXPECT_EQ(shop.state.currentEmployee, -1);
    EXPECT_EQ(shop.window.grdEmp.Row(), 0);
}

TEST_F(MainWindowTest, ClickOnTheFirstRowChoosesItsEmployee)
{
    ClickRow(1);
    EXPECT_EQ(LabelText("lblEmpName"), "Adams, Al");
    EXPECT_EQ(shop.state.currentEmployee, 1);
}

TEST_F(MainWindowTest, ClickOnAnotherRowChoosesItsEmployeeAndLoadsHisJobs)
{
    Given({ClosedJob(3, 1001, base::Date{38061})});
    ClickRow(3);
    EXPECT_EQ(LabelText("lblEmpName"), "Clark, Cy");
    EXPECT_EQ(shop.state.currentEmployee, 3);
    EXPECT_EQ(Find<QTableView>("grdDaily")->model()->rowCount(), 1);
    ASSERT_EQ(Find<QListWidget>("lstHistory")->count(), 1);
    EXPECT_TRUE(Find<QListWidget>("lstHistory")->item(0)->text().startsWith("1001   "));
}

TEST_F(MainWindowTest, ArrowKeyChoosesTheFirstEmployeeAndThenTheNext)
{
    QTest::keyClick(Find<QTableView>("grdEmp"), Qt::Key_Down);
    EXPECT_EQ(LabelText("lblEmpName"), "Adams, Al");
    EXPECT_EQ(shop.state.currentEmployee, 1);
    QTest::keyClick(Find<QTableView>("grdEmp"), Qt::Key_Down);
    EXPECT_EQ(LabelText("lblEmpName"), "Baker, Bo");
    EXPECT_EQ(shop.state.currentEmployee, 2);
}

TEST_F(MainWindowTest, AnotherEmployeeFindsTheRepairOrderBoxEmpty)
{
    QTest::keyClicks(Find<QComboBox>("cboRO"), "10");
    ClickRow(2);
    EXPECT_TRUE(Find<QComboBox>("cboRO")->currentText().isEmpty());
}

TEST_F(MainWindowTest, BoxListsTheRepairOrders)
{
    auto* box = Find<QComboBox>("cboRO");
    ASSERT_EQ(box->count(), 2);
    EXPECT_TRUE(box->itemText(0).startsWith("1001  "));
    EXPECT_EQ(box->currentIndex(), -1);
}

TEST_F(MainWindowTest, PickedOrderStartsOneJobAndLeavesItsNumber)
{
    ClickRow(2);
    Picks("BL", "Body");
    emit Find<QComboBox>("cboRO")->activated(1);
    EXPECT_EQ(dialogs.glSelects, 1);
    EXPECT_EQ(EmployeeRecord("Baker, Bo").Text("WO#"), "1002");
    EXPECT_EQ(Find<QComboBox>("cboRO")->currentText().toStdString(), "1002");
}

TEST_F(MainWindowTest, TypedNumberAndEnterStartOneJob)
{
    ClickRow(2);
    Picks("RL", "Paint");
    TypeOrder("1001");
    EXPECT_EQ(dialogs.glSelects, 1);
    EXPECT_EQ(EmployeeRecord("Baker, Bo").Text("WO#"), "1001");
    EXPECT_EQ(LabelText("lblJob"),
              "WO 1001 \u00b7 RL \u00b7 since 08:00 AM \u00b7 1999 Ford 1001 \u00b7 "
              "Customer 1001");
}

TEST_F(MainWindowTest, DoubleClickOnALastJobStartsItOnce)
{
    Given({ClosedJob(2, 1002, base::Date{38061})});
    ClickRow(2);
    Picks("BL", "Body");
    DoubleClickLastJob(0);
    EXPECT_EQ(dialogs.glSelects, 1);
    EXPECT_EQ(EmployeeRecord("Baker, Bo").Text("WO#"), "1002");
}

TEST_F(MainWindowTest, EnterOnALastJobStartsItOnce)
{
    Given({ClosedJob(2, 1002, base::Date{38061})});
    ClickRow(2);
    Picks("BL", "Body");
    Find<QListWidget>("lstHistory")->setCurrentRow(0);
    QTest::keyClick(Find<QListWidget>("lstHistory"), Qt::Key_Return);
    EXPECT_EQ(dialogs.glSelects, 1);
    EXPECT_EQ(EmployeeRecord("Baker, Bo").Text("WO#"), "1002");
}

TEST_F(MainWindowTest, TickSetsTheCaption)
{
    shop.window.Timer1.SetInterval(1);
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return window->windowTitle() != "Kelvaro Lodrin"; }, 2000));
    EXPECT_EQ(window->windowTitle().toStdString(), "Lodrin -      8:00:00 AM");
}

TEST_F(MainWindowTest, NoTickWhileABoxIsOpen)
{
    {
        const lodrin::EventGate::Window box(shop.gate, lodrin::EventGate::Modal::Box);
        shop.window.Timer1.SetInterval(1);
        QTest::qWait(60);
        EXPECT_EQ(window->windowTitle().toStdString(), "Kelvaro Lodrin");
    }
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return window->windowTitle() != "Kelvaro Lodrin"; }, 2000));
}

TEST_F(MainWindowTest, PressOnAButtonBehindABoxIsDropped)
{
    const lodrin::EventGate::Window box(shop.gate, lodrin::EventGate::Modal::Box);
    Find<QPushButton>("cmdExit")->click();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindowTest, RowClickedBehindABoxIsTakenBack)
{
    {
        const lodrin::EventGate::Window box(shop.gate, lodrin::EventGate::Modal::Box);
        ClickRow(3);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(shop.window.grdEmp.Row(), 0);
    EXPECT_FALSE(Find<QTableView>("grdEmp")->selectionModel()->hasSelection());
    EXPECT_EQ(LabelText("lblEmpName"), "Employee Name");
}

TEST_F(MainWindowTest, ClosingReportsItOnceAndStopsTheClock)
{
    int closings = 0;
    window->closed = [&closings] { ++closings; };
    shop.window.Timer1.SetInterval(1);
    window->close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(Find<QTimer>("Timer1")->isActive());
}

TEST_F(MainWindowTest, CloseRequestWaitsForTheProcedureThatRuns)
{
    {
        const lodrin::EventGate::Procedure running(shop.gate);
        window->close();
        EXPECT_TRUE(window->isVisible());
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }, 2000));
}

TEST_F(MainWindowTest, TabGoesFromBoardToOrderToLastJobsAndReachesExit)
{
    auto* board = Find<QTableView>("grdEmp");
    board->setFocus();
    QTest::keyClick(board, Qt::Key_Tab);
    EXPECT_TRUE(Find<QComboBox>("cboRO")->hasFocus() ||
                Find<QComboBox>("cboRO")->lineEdit()->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(Find<QListWidget>("lstHistory")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    for (const char* button : {"cmdBreak", "cmdEndDay", "cmdExit"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(Find<QPushButton>(button)->hasFocus()) << button;
    }
}

TEST_F(MainWindowTest, BreakByTheKeyboardClosesTheJobAndTheHeaderTellsIt)
{
    ClickRow(2);
    Picks("RL", "Paint");
    TypeOrder("1001");
    At("10:20 AM").ConfirmsProgress();
    Find<QPushButton>("cmdBreak")->setFocus();
    QTest::keyClick(Find<QPushButton>("cmdBreak"), Qt::Key_Space);
    EXPECT_EQ(dialogs.progresses, 1);
    EXPECT_EQ(Jobs().size(), 1U);
    EXPECT_EQ(LabelText("lblJob"), "Day started 08:00 AM \u00b7 no job open");
}

TEST_F(MainWindowTest, EndOfDayByTheKeyboardEndsTheDayAndTheHeaderTellsIt)
{
    ClickRow(2);
    Picks("RL", "Paint");
    TypeOrder("1001");
    At("04:30 PM").IsSure().ConfirmsProgress();
    Find<QPushButton>("cmdEndDay")->setFocus();
    QTest::keyClick(Find<QPushButton>("cmdEndDay"), Qt::Key_Space);
    EXPECT_EQ(Totals().size(), 1U);
    EXPECT_EQ(LabelText("lblJob"), "Day ended 04:30 PM");
}

TEST_F(MainWindowTest, ButtonsOfTheDayCanBeUsedAndSayNoMoreThanTheirCaption)
{
    for (const char* name : {"cmdBreak", "cmdEndDay"}) {
        EXPECT_TRUE(Find<QPushButton>(name)->isEnabled()) << name;
        EXPECT_TRUE(Find<QPushButton>(name)->toolTip().isEmpty()) << name;
        EXPECT_GE(Find<QPushButton>(name)->height(), 48) << name;
    }
}

TEST_F(MainWindowTest, RealTickEndsTheChosenDayInTheLastMinute)
{
    ClickRow(2);
    Picks("RL", "Paint");
    TypeOrder("1001");
    At("11:59 PM");
    shop.window.Timer1.SetInterval(1);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return LabelText("lblJob") == "Day ended 11:59 PM"; }, 2000));
    shop.window.Timer1.SetInterval(0);
    EXPECT_EQ(Totals().size(), 1U);
}

TEST_F(MainWindowTest, EndOfTheProgramInsideAnEventLeavesAtOnce)
{
    const EventDoor door(shop, [this](int exitCode) { left = exitCode; });
    door.Main([](lodrin::Shop&) { throw platform::ProgramEnded{.exitCode = 3}; });
    EXPECT_EQ(left, 3);
}

TEST_F(MainWindowTest, ErrorNobodyHandlesIsShownOnceAndEndsTheProgram)
{
    fakes.prompts.Expect("Run-time error '75':\r\n\r\n" + base::ErrorText(75));
    const EventDoor door(shop, [this](int exitCode) { left = exitCode; });
    door.Main([](lodrin::Shop&) { throw base::NumberedError(75); });
    EXPECT_EQ(left, 1);
}

TEST_F(MainWindowTest, NamesWithMarkupStayPlainText)
{
    shop.window.lblEmpName.SetCaption("<b>O'Neil</b> & Sons");
    EXPECT_EQ(Find<QLabel>("lblEmpName")->textFormat(), Qt::PlainText);
    EXPECT_EQ(LabelText("lblEmpName"), "<b>O'Neil</b> & Sons");
}

TEST_F(MainWindowTest, SentenceTellsADayWithoutAJobAndAnEndedDay)
{
    ClickRow(1);
    platform::Grid& board = shop.window.grdEmp;
    EXPECT_EQ(lodrin::ui::JobSentence(board), "Day not started");
    board.SetValue(LDEmp::StartDay.column, base::Date{0.375});
    EXPECT_EQ(lodrin::ui::JobSentence(board), "Day started 09:00 AM \u00b7 no job open");
    board.SetValue(LDEmp::EndDay.column, base::Date{0.75});
    EXPECT_EQ(lodrin::ui::JobSentence(board), "Day ended 06:00 PM");
}

}  // namespace
}  // namespace tests
