// SPDX-License-Identifier: Apache-2.0
// Tests of setup/ui/frmDateSelView.cpp and platform/qt/CalendarWidget.cpp
#include "app/Dispatch.h"
#include "app/ui/QtDialogs.h"
#include "base/Calendar.h"
#include "platform/qt/CalendarWidget.h"
#include "tests/support/ShellFixture.h"
#include "tests/ui/Robot.h"

#include <QApplication>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolButton>

namespace tests {
namespace {

constexpr double kIdes = 38061;  // Monday, March 15, 2004

class DateSelTest : public ShellFixture {
protected:
    void Show(const std::function<void(QDialog&, QCalendarWidget&)>& user)
    {
        Robot robot;
        robot.Then([&](QDialog& window) {
            (void)QTest::qWaitForWindowActive(&window);
            user(window, demo::Find<QCalendarWidget>(window, "Calendar1"));
            EXPECT_TRUE(QTest::qWaitFor([&window] { return !window.isVisible(); }, 2000));
            if (window.isVisible()) window.done(-1);
        });
        lodrin::Dispatch(real, [](lodrin::Shop& on) { lodrin::ShowDateSel(on); });
    }
    static QTableView& Days(QCalendarWidget& calendar)
    {
        return demo::Find<QTableView>(calendar, "qt_calendar_calendarview");
    }
    static void Press(int key)
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    }

    lodrin::ui::QtDialogs qt;
    lodrin::Shop real{qt, services, engine};
};

TEST_F(DateSelTest, ShowsTheSelectedDateAndItsCaptions)
{
    real.values.selectedDate = {kIdes};
    Show([](QDialog& window, QCalendarWidget& calendar) {
        EXPECT_EQ(window.windowTitle().toStdString(), "Date Selection");
        EXPECT_EQ(calendar.selectedDate(), QDate(2004, 3, 15));
        EXPECT_EQ(calendar.accessibleName().toStdString(), "Calendar1");
        EXPECT_EQ(demo::Find<QPushButton>(window, "cmdExit").text().toStdString(), "OK");
        EXPECT_EQ(demo::Find<QPushButton>(window, "Command1").text().toStdString(), "Cancel");
        demo::Find<QPushButton>(window, "cmdExit").click();
    });
    EXPECT_EQ(real.values.selectedDate, base::Date{kIdes});
}

TEST_F(DateSelTest, ArrowKeysAndEnterPickADate)
{
    real.values.selectedDate = {kIdes};
    Show([](QDialog&, QCalendarWidget&) {
        Press(Qt::Key_Right);
        Press(Qt::Key_Down);
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(real.values.selectedDate, base::Date{kIdes + 8});
}

TEST_F(DateSelTest, DoubleClickOnADayPicksIt)
{
    real.values.selectedDate = {kIdes};
    Show([](QDialog&, QCalendarWidget& calendar) {
        QTableView& days = Days(calendar);
        const QPoint monday = days.visualRect(days.currentIndex()).center();
        const QPoint tuesday = monday + QPoint(days.columnWidth(1), 0);
        QTest::mouseClick(days.viewport(), Qt::LeftButton, {}, tuesday);
        EXPECT_EQ(calendar.selectedDate(), QDate(2004, 3, 16));
        QTest::mouseDClick(days.viewport(), Qt::LeftButton, {}, tuesday);
    });
    EXPECT_EQ(real.values.selectedDate, base::Date{kIdes + 1});
}

TEST_F(DateSelTest, CancelEscapeAndCloseBoxStoreTheStartingDateWithoutItsTime)
{
    const std::function<void(QDialog&)> ways[] = {
        [](QDialog& window) { demo::Find<QPushButton>(window, "Command1").click(); },
        [](QDialog&) { Press(Qt::Key_Escape); }, [](QDialog& window) { window.close(); }};
    for (const auto& leave : ways) {
        real.values.selectedDate = {kIdes + 0.25};
        Show([&](QDialog& window, QCalendarWidget& calendar) {
            calendar.showNextMonth();
            Press(Qt::Key_Right);
            EXPECT_NE(calendar.selectedDate(), QDate(2004, 3, 15));
            leave(window);
        });
        EXPECT_EQ(real.values.selectedDate, base::Date{kIdes});
    }
}

TEST_F(DateSelTest, WithoutASelectedDateItStartsAtToday)
{
    Show([](QDialog& window, QCalendarWidget& calendar) {
        EXPECT_EQ(calendar.selectedDate(), QDate(2024, 1, 15));
        window.close();
    });
    EXPECT_EQ(real.values.selectedDate, base::Date{0});
}

TEST_F(DateSelTest, HiddenDialogIsTheSameWhenItIsShownAgain)
{
    const QDialog* first = nullptr;
    Show([&](QDialog& window, QCalendarWidget&) {
        first = &window;
        window.close();
    });
    Show([&](QDialog& window, QCalendarWidget&) {
        EXPECT_EQ(&window, first);
        window.close();
    });
}

TEST_F(DateSelTest, EverythingThatIsTouchedIsLargeEnoughForAThumb)
{
    Show([](QDialog& window, QCalendarWidget& calendar) {
        for (auto* button : window.findChildren<QPushButton*>())
            EXPECT_GE(button->height(), 48);
        for (auto* button : calendar.findChildren<QToolButton*>()) {
            if (!button->isVisible()) continue;
            EXPECT_GE(button->height(), 48) << button->objectName().toStdString();
            EXPECT_GE(button->width(), 48) << button->objectName().toStdString();
            EXPECT_FALSE(button->accessibleName().isEmpty());
        }
        const QTableView& days = Days(calendar);
        const QRect day = days.visualRect(days.currentIndex());
        EXPECT_GE(day.width(), 47);  // and a line of the grid
        EXPECT_GE(day.height(), 47);
        window.close();
    });
}

TEST_F(DateSelTest, CalendarSpeaksTheLanguageOfTheMachine)
{
    platform::Calendar date;
    const QLocale german(QLocale::German, QLocale::Germany);
    const platform::qt::CalendarWidget there(date, nullptr, german);
    EXPECT_EQ(there.firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(there.locale(), german);
    const QLocale american(QLocale::English, QLocale::UnitedStates);
    const platform::qt::CalendarWidget here(date, nullptr, american);
    EXPECT_EQ(here.firstDayOfWeek(), Qt::Sunday);
    EXPECT_EQ(platform::qt::MachineLocale(QLocale::c()), american);
}

}  // namespace
}  // namespace tests
