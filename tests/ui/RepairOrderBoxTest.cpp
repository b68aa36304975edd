// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt/RepairOrderBox.cpp
#include "platform/qt/RepairOrderBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::ComboBox;
using platform::qt::RepairOrderBox;

class RepairOrderBoxTest : public testing::Test {
protected:
    RepairOrderBoxTest()
    {
        layout.addWidget(&view);
        layout.addWidget(&other);
        for (const char* entry : {"100  Car", "1001  Truck", "1002  Van"})
            box.AddItem(entry);
        view.picked = [this] { ++picks; };
        view.entered = [this] { ++enters; };
        window.show();
        (void)QTest::qWaitForWindowActive(&window);
        view.setFocus();
    }
    // Keys as they come from the keyboard: to whatever has the focus.
    void Press(Qt::Key key) { QTest::keyPress(QGuiApplication::focusWindow(), key); }
    void Release(Qt::Key key) { QTest::keyRelease(QGuiApplication::focusWindow(), key); }
    void Type(Qt::Key key)
    {
        Press(key);
        Release(key);
    }

    ComboBox box;
    QWidget window;
    QVBoxLayout layout{&window};
    RepairOrderBox view{box, &window};
    QLineEdit other{&window};
    int picks = 0, enters = 0;
};

TEST_F(RepairOrderBoxTest, AddingEntriesSelectsNothing)
{
    EXPECT_EQ(view.count(), 3);
    EXPECT_EQ(view.currentIndex(), -1);
    EXPECT_EQ(view.currentText().toStdString(), "");
    EXPECT_EQ(box.Text(), "");
}

TEST_F(RepairOrderBoxTest, TypingReachesTheControlAndCompletesNothing)
{
    QTest::keyClicks(&view, "10");
    EXPECT_EQ(view.currentText().toStdString(), "10");
    EXPECT_EQ(box.Text(), "10");
    EXPECT_EQ(picks, 0);
}

TEST_F(RepairOrderBoxTest, TypedNumberAndEnterIsReportedOnce)
{
    QTest::keyClicks(&view, "77");
    Type(Qt::Key_Return);
    EXPECT_EQ(enters, 1);
    EXPECT_EQ(picks, 0);
    EXPECT_EQ(view.count(), 3);
}

TEST_F(RepairOrderBoxTest, EnterOfTheKeypadCountsToo)
{
    QTest::keyClicks(&view, "77");
    Type(Qt::Key_Enter);
    EXPECT_EQ(enters, 1);
}

TEST_F(RepairOrderBoxTest, EnterOnTheTextOfAnEntryIsNoPick)
{
    QTest::keyClicks(&view, "1001  Truck");
    Type(Qt::Key_Return);
    EXPECT_EQ(enters, 1);
    EXPECT_EQ(picks, 0);
}

TEST_F(RepairOrderBoxTest, ReleaseAloneCounts)
{
    QTest::keyClicks(&view, "77");
    Release(Qt::Key_Return);
    EXPECT_EQ(enters, 1);
}

TEST_F(RepairOrderBoxTest, EnterThatClosedADialogStartsNothing)
{
    QTest::keyClicks(&view, "77");
    QDialog dialog(&window);
    auto* okay = new QPushButton("Okay", &dialog);
    okay->setDefault(true);
    QObject::connect(okay, &QPushButton::clicked, &dialog, &QDialog::accept);
    QTimer::singleShot(20, &dialog, [&] {
        (void)QTest::qWaitForWindowActive(&dialog);
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    window.activateWindow();
    (void)QTest::qWaitForWindowActive(&window);
    Release(Qt::Key_Return);
    EXPECT_EQ(enters, 0);
    Type(Qt::Key_Return);
    EXPECT_EQ(enters, 1);
}

TEST_F(RepairOrderBoxTest, EnterPressedElsewhereStartsNothing)
{
    other.setFocus();
    Press(Qt::Key_Return);
    view.setFocus();
    Release(Qt::Key_Return);
    EXPECT_EQ(enters, 0);
}

TEST_F(RepairOrderBoxTest, ArrowOpensTheListAndPicksNothing)
{
    Type(Qt::Key_Down);
    EXPECT_TRUE(view.view()->isVisible());
    EXPECT_EQ(picks, 0);
    view.hidePopup();
}

TEST_F(RepairOrderBoxTest, EnterInTheOpenListIsAPickAndNoEnter)
{
    view.showPopup();
    view.view()->setCurrentIndex(view.model()->index(2, 0));
    Press(Qt::Key_Return);
    (void)QTest::qWaitFor([&] { return !view.view()->isVisible(); }, 1000);
    Release(Qt::Key_Return);
    EXPECT_EQ(picks, 1);
    EXPECT_EQ(enters, 0);
    EXPECT_EQ(box.Text(), "1002  Van");
}

TEST_F(RepairOrderBoxTest, SameEntryCanBePickedAgain)
{
    view.picked = [this] {
        ++picks;
        EXPECT_EQ(box.Text(), "1001  Truck");
        box.SetText("1001");
    };
    for (int times = 0; times < 2; ++times)
        emit view.activated(1);
    EXPECT_EQ(picks, 2);
    EXPECT_EQ(view.currentText().toStdString(), "1001");
}

TEST_F(RepairOrderBoxTest, MousePicksAnEntryOfTheOpenList)
{
    view.showPopup();
    QTest::qWait(400);  // a popup ignores a release that follows too quickly
    QWidget* list = view.view()->viewport();
    const QPoint van = view.view()->visualRect(view.model()->index(2, 0)).center();
    QTest::mouseMove(list, van);
    QTest::mouseClick(list, Qt::LeftButton, {}, van);
    EXPECT_EQ(picks, 1);
    EXPECT_EQ(box.Text(), "1002  Van");
}

TEST_F(RepairOrderBoxTest, WheelChangesNothing)
{
    QWheelEvent wheel(QPointF(5, 5), view.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view, &wheel);
    EXPECT_EQ(view.currentIndex(), -1);
    EXPECT_EQ(picks, 0);
}

TEST_F(RepairOrderBoxTest, RefillKeepsNothingOfTheOldList)
{
    box.SetText("1001");
    box.Clear();
    box.AddItem("2001  Wagon");
    EXPECT_EQ(view.count(), 1);
    EXPECT_EQ(view.itemText(0).toStdString(), "2001  Wagon");
    EXPECT_EQ(view.currentText().toStdString(), "");
    EXPECT_EQ(picks, 0);
}

TEST_F(RepairOrderBoxTest, ClearingTheTextPicksNothing)
{
    QTest::keyClicks(&view, "77");
    box.SetText("");
    EXPECT_EQ(view.currentText().toStdString(), "");
    EXPECT_EQ(picks, 0);
}

}  // namespace
}  // namespace tests
