// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt/ListWidget.cpp
#include "platform/qt/ListWidget.h"

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::ListBox;
using platform::qt::ListWidget;

class ListWidgetTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* entry : {"1001   Truck", "1002   Van", "1003   Coupe"})
            list.AddItem(entry);
        window.resize(300, 300);
        window.show();
        (void)QTest::qWaitForWindowActive(&window);
        view.doubleClicked = [this] { ++doubleClicks; };
    }
    QPoint Entry(int row) { return view.visualItemRect(view.item(row)).center(); }

    ListBox list;
    QWidget window;
    QVBoxLayout layout{&window};
    ListWidget view{list, &window};
    int doubleClicks = 0;
    ListWidgetTest() { layout.addWidget(&view); }
};

TEST_F(ListWidgetTest, ShowsTheEntries)
{
    ASSERT_EQ(view.count(), 3);
    EXPECT_EQ(view.item(2)->text().toStdString(), "1003   Coupe");
}

TEST_F(ListWidgetTest, FocusSelectsNothing)
{
    view.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(view.hasFocus());
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_FALSE(view.currentIndex().isValid());
}

TEST_F(ListWidgetTest, FocusSelectsNothingAfterARefillEither)
{
    list.Clear();
    list.AddItem("1009   Wagon");
    view.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_FALSE(view.currentIndex().isValid());
}

TEST_F(ListWidgetTest, ClickSelects)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Entry(1));
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_EQ(list.Text(), "1002   Van");
}

TEST_F(ListWidgetTest, SelectionByTheProgramIsShown)
{
    list.SetListIndex(2);
    EXPECT_EQ(view.currentRow(), 2);
    list.SetListIndex(-1);
    EXPECT_TRUE(view.selectedItems().isEmpty());
}

TEST_F(ListWidgetTest, DoubleClickIsReportedOnce)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Entry(0));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, Entry(0));
    EXPECT_EQ(doubleClicks, 1);
    EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ListWidgetTest, DoubleClickOnEmptySpaceIsNone)
{
    list.SetListIndex(0);
    const QPoint below = Entry(2) + QPoint(0, 60);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, below);
    EXPECT_EQ(doubleClicks, 0);
}

TEST_F(ListWidgetTest, EnterOnTheSelectedEntryIsADoubleClick)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Entry(1));
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(doubleClicks, 1);
}

TEST_F(ListWidgetTest, EnterWithoutASelectionIsNothing)
{
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(doubleClicks, 0);
}

TEST_F(ListWidgetTest, RefusedSelectionIsTakenBack)
{
    list.SetListIndex(0);
    view.chosen = [](int) {};
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Entry(2));
    QCoreApplication::processEvents();
    EXPECT_EQ(view.currentRow(), 0);
}

TEST_F(ListWidgetTest, EntriesAreLargeEnoughForAThumb)
{
    EXPECT_GE(view.visualItemRect(view.item(0)).height(), 48);
}

TEST(ListWidgetLifeTest, ListOutlivesItsView)
{
    ListBox list;
    {
        const ListWidget view(list, nullptr);
        list.AddItem("a");
    }
    list.AddItem("b");
    EXPECT_EQ(list.ListCount(), 2);
}

}  // namespace
}  // namespace tests
