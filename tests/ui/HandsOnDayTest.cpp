// SPDX-License-Identifier: Apache-2.0
// HandsOnDayTest: a whole day by the keyboard alone, by touch alone, and with a scanner.
#include "platform/qt/ShopStyle.h"
#include "tests/ui/StagedDay.h"

#include <QLineEdit>
#include <QTest>

namespace tests {
namespace {

using platform::qt::kTouchTarget;

// What the day leaves, however it was worked.
class HandsOnDayTest : public OwnShopTest {
protected:
    void SetUp() override
    {
        OwnShopTest::SetUp();
        StartNewShop();
        Window().activateWindow();
        (void)QTest::qWaitForWindowActive(&Window());
    }
    void ExpectWholeDay()
    {
        const std::vector<Record> jobs = Rows("SELECT * FROM LDHistory");
        std::string closed;
        for (const Record& job : jobs)
            closed += job.Text("WONumb") + " " + job.Text("Hrs") + "; ";
        ASSERT_EQ(jobs.size(), 3U) << closed;
        EXPECT_EQ(jobs[0].Text("WONumb"), "1001");
        EXPECT_EQ(jobs[0].Text("Hrs"), "2.33");
        EXPECT_EQ(jobs[1].Text("WONumb"), "1002");
        EXPECT_EQ(jobs[1].Text("Hrs"), "1.67");
        EXPECT_EQ(jobs[2].Text("WONumb"), "1001");
        EXPECT_EQ(jobs[2].Text("Hrs"), "4");
        const std::vector<Record> totals = Rows("SELECT * FROM LDTotals");
        ASSERT_EQ(totals.size(), 1U);
        EXPECT_EQ(totals[0].Text("EmpID"), "2");
        EXPECT_EQ(totals[0].Text("TotHrs"), "8.5");
        EXPECT_EQ(totals[0].Text("JobCount"), "3");
        const std::vector<Record> board = Rows("SELECT * FROM LDEmp WHERE EmpID = 2");
        EXPECT_EQ(board[0].Text("EndDay"), "4:30:00 PM");
        jet::io::StdFileSystem files;
        EXPECT_SPOTLESS(files, File().string());
    }
    std::string CurrentName() { return LabelText("lblEmpName"); }
};

// The window that has the keyboard. Where no window manager gives it back after a dialog, the main
// window takes it.
QWindow* Keyboard()
{
    QWidget* modal = QApplication::activeModalWidget();
    QWidget& front = modal != nullptr ? *modal : demo::Window("frmLodrin");
    const auto ready = [&front] {
        const QWidget* focus = QApplication::focusWidget();
        return focus != nullptr && focus->window() == &front &&
               QGuiApplication::focusWindow() == front.windowHandle();
    };
    if (!ready()) {
        front.activateWindow();
        (void)QTest::qWaitFor(ready, 1000);
    }
    return QGuiApplication::focusWindow();
}

// Every key goes to whatever has the keyboard; it is let go wherever that is by then.
void Key(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier)
{
    QTest::keyPress(Keyboard(), key, with);
    try {
        QTest::keyRelease(Keyboard(), key, with);
    } catch (const std::logic_error&) {
        // The key closed the program.
    }
}

void Letters(const QString& text)
{
    for (const QChar letter : text)
        QTest::keyClick(Keyboard(), letter.toLatin1());
}

class KeyboardDayTest : public HandsOnDayTest {
protected:
    // Tabs on until that control has the keyboard.
    void TabTo(const char* name)
    {
        for (int tabs = 0; tabs < 12; ++tabs) {
            const QWidget* focus = QApplication::focusWidget();
            if (focus != nullptr && focus->objectName() == name) return;
            Key(Qt::Key_Tab);
        }
        FAIL() << "the Tab key does not reach " << name;
    }
    void ByKeys(const QString& keys)
    {
        robot.Then([keys](QDialog& dialog) {
            (void)QTest::qWaitForWindowActive(&dialog);
            Letters(keys);
            Key(Qt::Key_Return);
        });
    }
    void LaborByKeys(const QString& code, const QString& department)
    {
        robot.Then([code, department](QDialog& dialog) {
            (void)QTest::qWaitForWindowActive(&dialog);
            Letters(code);
            Key(Qt::Key_Tab);
            Letters(department);
            Key(Qt::Key_Return);
        });
    }
};

TEST_F(KeyboardDayTest, WholeDay)
{
    staged->At("08:00 AM");
    TabTo("grdEmp");
    Letters("bak");
    EXPECT_EQ(CurrentName(), "Baker, Bo");
    ByKeys("77");
    LaborByKeys("b", "body");
    TabTo("cboRO");
    Letters("1001");
    Key(Qt::Key_Return);
    EXPECT_EQ(Rows("SELECT * FROM LDEmp WHERE EmpID = 2")[0].Text("WO#"), "1001");

    // The other car, found by its vehicle.
    staged->At("10:20 AM");
    ByKeys("77");
    LaborByKeys("r", "paint");
    Letters("ford 1002");
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_EQ(Rows("SELECT * FROM LDEmp WHERE EmpID = 2")[0].Text("WO#"), "1002");

    staged->At("12:00 PM");
    ByKeys("77");
    ByKeys("in");
    TabTo("cmdBreak");
    Key(Qt::Key_Space);

    // Back to the first car, from the list of last jobs.
    staged->At("12:30 PM");
    ByKeys("77");
    LaborByKeys("b", "body");
    TabTo("lstHistory");
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);

    staged->At("04:30 PM");
    robot.Then([](QDialog& box) {
        (void)QTest::qWaitForWindowActive(&box);
        Key(Qt::Key_Y);
        // The button is seen going down before the box closes.
        EXPECT_TRUE(QTest::qWaitFor([&box] { return !box.isVisible(); }, 2000));
    });
    ByKeys("77");
    ByKeys("in");
    TabTo("cmdEndDay");
    Key(Qt::Key_Space);
    Key(Qt::Key_E, Qt::AltModifier);  // Exit
    (void)QTest::qWaitFor([this] { return staged->closed; }, 1000);
    EXPECT_TRUE(staged->closed);
    ExpectWholeDay();
}

TEST_F(KeyboardDayTest, MenusOpenByTheirLetters)
{
    robot.Box(kNothingToSynchronise);
    Key(Qt::Key_F, Qt::AltModifier);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_S);
    EXPECT_EQ(robot.Waiting(), 0U);
}

// A wedge scanner is a keyboard that types fast and ends with Enter, wherever the keyboard is.
TEST_F(KeyboardDayTest, ScannerWorksFromTheBoardTheListAndTheBox)
{
    staged->At("08:00 AM");
    Choose("Adams, Al");
    for (const char* place : {"grdEmp", "lstHistory", "cmdExit", "cboRO"}) {
        TabTo(place);
        robot.Labor("BL", "Body");
        const QString number = place == std::string("lstHistory") ? "1002" : "1001";
        Letters(number);
        Key(Qt::Key_Return);
        EXPECT_EQ(robot.Waiting(), 0U) << place;
        EXPECT_EQ(Rows("SELECT * FROM LDEmp WHERE EmpID = 1")[0].Text("WO#"), number.toStdString())
            << place;
    }
    EXPECT_TRUE(Rows("SELECT * FROM LDHistory").empty()) << "all in one minute";
}

// Touch: a finger on what is to be seen, through the touch screen's own events.
void Touch(QWidget& widget, const QRect& target)
{
    static QPointingDevice* screen = QTest::createTouchDevice();
    EXPECT_GE(target.width(), kTouchTarget) << widget.objectName().toStdString();
    EXPECT_GE(target.height(), kTouchTarget) << widget.objectName().toStdString();
    QWidget* window = widget.window();
    const QPoint place = widget.mapTo(window, target.center());
    EXPECT_TRUE(window->rect().contains(place)) << widget.objectName().toStdString();
    QWidget* hit = window->childAt(place);
    EXPECT_TRUE(hit == &widget || (hit != nullptr && widget.isAncestorOf(hit)))
        << widget.objectName().toStdString() << " is covered";
    QTest::touchEvent(window->windowHandle(), screen).press(1, place);
    QTest::qWait(10);
    QTest::touchEvent(window->windowHandle(), screen).release(1, place);
    QTest::qWait(10);
}

void Touch(QWidget& widget)
{
    Touch(widget, widget.rect());
}

void TouchEntry(QListWidget& list, const std::string& beginning)
{
    const int entry = demo::EntryOf(list, beginning);
    ASSERT_GE(entry, 0) << beginning;
    list.scrollToItem(list.item(entry));
    Touch(*list.viewport(), list.visualItemRect(list.item(entry)));
}

class TouchDayTest : public HandsOnDayTest {
protected:
    void TouchName(const std::string& name)
    {
        auto& board = demo::Find<QTableView>(Window(), "grdEmp");
        const QModelIndex cell = board.model()->index(demo::RowOf(board, name), 2);
        board.scrollTo(cell);
        Touch(*board.viewport(), board.visualRect(cell));
        EXPECT_EQ(CurrentName(), name);
    }
    void TouchButton(const char* name)
    {
        QTest::qWait(450);  // not a double tap
        Touch(demo::Find<QPushButton>(Window(), name));
    }
    void PinByTouch()
    {
        robot.Then([](QDialog& prompt) {
            Touch(demo::Find<QPushButton>(prompt, "key7"));
            Touch(demo::Find<QPushButton>(prompt, "key7"));
            EXPECT_EQ(demo::Find<QLineEdit>(prompt, "txtInput").text().toStdString(), "77");
            for (QPushButton* button : prompt.findChildren<QPushButton*>())
                if (button->isDefault()) return Touch(*button);
        });
    }
    void LaborByTouch(const std::string& code, const std::string& department)
    {
        robot.Then([code, department](QDialog& dialog) {
            TouchEntry(demo::Find<QListWidget>(dialog, "lstGLCodes"), code + " ");
            TouchEntry(demo::Find<QListWidget>(dialog, "lstDepartments"), department);
            Touch(demo::Find<QPushButton>(dialog, "cmdExit"));
        });
    }
    void ProgressByTouch()
    {
        robot.Then([](QDialog& dialog) {
            TouchEntry(demo::Find<QListWidget>(dialog, "lstProgress"), "In paint");
            Touch(demo::Find<QPushButton>(dialog, "cmdOkay"));
        });
    }
    // Opens the list by its arrow and touches the entry.
    void PickByTouch(int entry)
    {
        auto& orders = demo::Find<QComboBox>(Window(), "cboRO");
        const QRect arrow(orders.width() - kTouchTarget, 0, kTouchTarget, orders.height());
        Touch(orders, arrow);
        ASSERT_TRUE(orders.view()->isVisible());
        QTest::qWait(400);  // a popup ignores a touch that follows too quickly
        Touch(*orders.view()->viewport(),
              orders.view()->visualRect(orders.model()->index(entry, 0)));
    }
};

TEST_F(TouchDayTest, WholeDay)
{
    staged->At("08:00 AM");
    TouchName("Baker, Bo");
    PinByTouch();
    LaborByTouch("BL", "Body");
    PickByTouch(0);
    EXPECT_EQ(Rows("SELECT * FROM LDEmp WHERE EmpID = 2")[0].Text("WO#"), "1001");

    staged->At("10:20 AM");
    PinByTouch();
    LaborByTouch("RL", "Paint");
    PickByTouch(1);

    staged->At("12:00 PM");
    PinByTouch();
    ProgressByTouch();
    TouchButton("cmdBreak");

    staged->At("12:30 PM");
    PinByTouch();
    LaborByTouch("BL", "Body");
    auto& last = demo::Find<QListWidget>(Window(), "lstHistory");
    TouchEntry(last, "1001   ");
    TouchEntry(last, "1001   ");  // a double tap

    staged->At("04:30 PM");
    robot.Then(
        [](QDialog& box) { Touch(*qobject_cast<QMessageBox*>(&box)->button(QMessageBox::Yes)); });
    PinByTouch();
    ProgressByTouch();
    TouchButton("cmdEndDay");
    TouchButton("cmdExit");
    EXPECT_TRUE(staged->closed);
    ExpectWholeDay();
}

TEST_F(TouchDayTest, PinWithLettersIsTouchedInToo)
{
    staged->At("08:00 AM");
    TouchName("Baker, Bo");
    robot.Then([](QDialog& prompt) {
        const auto touch = [&prompt](const char* key) {
            Touch(demo::Find<QPushButton>(prompt, key));
        };
        for (const char* key : {"key1", "keyABC", "keya", "keyShift", "keyb", "keyq"})
            touch(key);
        for (QPushButton* erase : prompt.findChildren<QPushButton*>("keyErase"))
            if (erase->isVisible()) Touch(*erase);
        EXPECT_EQ(demo::Find<QLineEdit>(prompt, "txtInput").text().toStdString(), "1aB");
        prompt.reject();
    });
    robot.Box("Invalid PIN entered");
    PickByTouch(0);
}

}  // namespace
}  // namespace tests
