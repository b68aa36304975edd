// SPDX-License-Identifier: Apache-2.0
// WindowsTest: every window and box of a day, on whatever screen and scale the tests run.
#include "app/Dispatch.h"
#include "base/NumberedError.h"
#include "tests/ui/StagedDay.h"
#include "tests/ui/WindowFaults.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace tests {
namespace {

class WindowsTest : public OwnShopTest {
protected:
    static void ExpectRight(QWidget& window)
    {
        QTest::qWait(20);
        for (const std::string& fault : FaultsOf(window))
            ADD_FAILURE() << window.objectName().toStdString() << ": " << fault;
    }
    void Open()
    {
        const auto confirm = [](QDialog& box) {
            ExpectRight(box);
            demo::Press(box, box.windowTitle() == "Date Verification" ? QMessageBox::Yes
                                                                      : QMessageBox::Ok);
        };
        staged.emplace(Program(), Data(), base::DateFrom({2009, 12, 30, 7, 0, 0}));
        for (int boxes = 0; boxes < 3; ++boxes)
            robot.Then(confirm);
        staged->Start();
        staged->At("08:00 AM");
    }
};

TEST_F(WindowsTest, BoxesAtTheStartAndMainWindow)
{
    Open();
    ExpectRight(Window());
}

TEST_F(WindowsTest, MenusAreLargeEnoughToBeTouched)
{
    Open();
    for (const char* name : {"mnuFile", "mnuSetup"}) {
        auto& menu = demo::Find<QMenu>(Window(), name);
        menu.popup(Window().mapToGlobal(QPoint(8, 48)));
        for (QAction* action : menu.actions()) {
            EXPECT_GE(menu.actionGeometry(action).height(), 48) << action->text().toStdString();
        }
        menu.close();
    }
}

TEST_F(WindowsTest, PromptDialogsAndBoxesOfAJob)
{
    Open();
    Choose("Baker, Bo");
    robot.Then([](QDialog& prompt) {
        ExpectRight(prompt);
        demo::AnswerPrompt(prompt, "77");
    });
    robot.Then([](QDialog& dialog) {
        ExpectRight(dialog);
        demo::ChooseLabor(dialog, "BL", "Body");
    });
    Type("1001");
    ExpectRight(Window());

    robot.Pin("77");
    robot.Then([](QDialog& dialog) {
        ExpectRight(dialog);
        demo::Find<QPushButton>(dialog, "cmdOkay").click();
    });
    demo::Find<QPushButton>(Window(), "cmdBreak").click();

    robot.Then([](QDialog& box) {
        ExpectRight(box);
        demo::Press(box, QMessageBox::No);
    });
    demo::Find<QPushButton>(Window(), "cmdEndDay").click();

    robot.Pin("77");
    robot.Labor("BL", "Body");
    robot.Then([](QDialog& box) {
        ExpectRight(box);
        demo::Press(box, QMessageBox::Ok);
    });
    Type("4711");
}

TEST_F(WindowsTest, LongestBoxes)
{
    Open();
    const std::string sentence =
        "If the software appears in the task list, highlight it and end the task. ";
    for (const platform::Icon icon : {platform::Icon::None, platform::Icon::Critical})
        for (const int sentences : {5, 8, 12}) {
            std::string text;
            for (int i = 0; i < sentences; ++i)
                text += sentence;
            robot.Then([](QDialog& box) {
                ExpectRight(box);
                demo::Press(box, QMessageBox::Ok);
            });
            staged->prompts.Show({.text = text, .title = "Duplicate Program", .icon = icon});
        }
}

TEST_F(WindowsTest, OpenDatabaseDialog)
{
    Open();
    robot.Then([](QDialog& dialog) {
        ExpectRight(dialog);
        dialog.reject();
    });
    EXPECT_THROW((void)staged->prompts.OpenFile("Ostrel (Kelvaro.mdb)|Kelvaro.mdb|ALL (*.*)|*.*"),
                 base::NumberedError);
}

TEST_F(WindowsTest, StatusDescriptionsDateSelectionAndPreview)
{
    Open();
    robot.Then([](QDialog& window) {
        ExpectRight(window);
        auto& grid = demo::Find<QTableView>(window, "grdStatus");
        QTest::keyClick(&grid, Qt::Key_F2);
        auto& line = demo::Find<QLineEdit>(window, "cellEditor");
        line.setText(QString(80, 'x'));
        // The robot is busy with this window: the box over it is answered apart.
        QTimer::singleShot(50, &window, [] {
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ExpectRight(*box);
            demo::Press(*box, QMessageBox::Ok);
        });
        QTest::keyClick(&line, Qt::Key_Return);
        QTest::keyClick(&line, Qt::Key_Escape);
        demo::Find<QPushButton>(window, "cmdExit").click();
    });
    demo::Find<QAction>(Window(), "mnuSetupItems").trigger();

    robot.Then([](QDialog& window) {
        ExpectRight(window);
        demo::Find<QPushButton>(window, "Command1").click();
    });
    lodrin::Dispatch(staged->shop, [](lodrin::Shop& shop) { lodrin::ShowDateSel(shop); });

    staged->shop.forms.preview.GEXPreview1.Fill(staged->shop.window.grdEmp, "Employees");
    staged->dialogs.ShowPreview(staged->shop);
    ExpectRight(demo::Window("frmPreview"));
    demo::Find<QPushButton>(demo::Window("frmPreview"), "cmdClose").click();
}

TEST_F(WindowsTest, SplashAndProcessingMessage)
{
    staged.emplace(Program(), Data(), base::DateFrom({2009, 12, 30, 7, 0, 0}));
    lodrin::Shop& shop = staged->shop;
    staged->dialogs.ShowSplash(shop);
    ExpectRight(demo::Window("frmSplash"));
    staged->dialogs.ShowProcMsg(shop);
    shop.forms.procMsg.Label1.SetCaption("Synchronizing LD - Processing employees");
    ExpectRight(demo::Window("frmProcMsg"));
    staged->dialogs.UnloadProcMsg(shop);
    staged->dialogs.UnloadSplash(shop);
}

// A desktop without a window manager activates nothing, and one with it puts a box anywhere.
TEST_F(WindowsTest, BoxStandsInTheMiddleOfTheWindowItBelongsTo)
{
    Open();
    robot.Then([this](QDialog& box) {
        const QPoint off = box.geometry().center() - Window().geometry().center();
        EXPECT_LE(off.manhattanLength(), 60);
        demo::Press(box, QMessageBox::Ok);
    });
    staged->prompts.Show({.text = "Invalid PIN entered"});
}

// The main window's activation unloads it while the desktop still has to tell it that it is no
// longer the active one.
TEST_F(WindowsTest, SplashOutlivesTheActivationThatUnloadsIt)
{
    staged.emplace(Program(), Data(), base::DateFrom({2009, 12, 30, 7, 0, 0}));
    staged->dialogs.ShowSplash(staged->shop);
    const QPointer<QWidget> splash = &demo::Window("frmSplash");
    staged->dialogs.UnloadSplash(staged->shop);
    ASSERT_NE(splash, nullptr);
    EXPECT_FALSE(splash->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(splash, nullptr);
}

TEST_F(WindowsTest, RowsOfTheBoardReadSensibly)
{
    Open();
    Choose("Adams, Al");
    robot.Labor("BL", "Body");
    Type("1001");
    const QAbstractItemModel& board = *demo::Find<QTableView>(Window(), "grdEmp").model();
    const auto told = [&](int row) {
        return board.index(row, 2).data(Qt::AccessibleDescriptionRole).toString().toStdString();
    };
    EXPECT_EQ(told(0), "Adams, Al, working on repair order 1001 since 08:00 AM, BL, "
                       "1999 Ford 1001, Customer 1001");
    EXPECT_EQ(told(1), "Baker, Bo, day not started");
    EXPECT_EQ(board.index(0, 2).data().toString().toStdString(), "Adams, Al");

    staged->At("10:20 AM");
    robot.Labor("BL", "Body");
    Type("1002");
    const QAbstractItemModel& jobs = *demo::Find<QTableView>(Window(), "grdDaily").model();
    EXPECT_EQ(jobs.index(0, 9).data(Qt::AccessibleDescriptionRole).toString().toStdString(),
              "Repair order 1001, 1999 Ford 1001, BL, 08:00 AM to 10:20 AM, 2.33 hours");
}

}  // namespace
}  // namespace tests
