// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt/MatchList.cpp and platform/qt/EntryFinder.cpp, by itself and under the box
// that it belongs to.
#include "platform/qt/MatchList.h"

#include "platform/qt/EntryFinder.h"
#include "platform/qt/RepairOrderBox.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::ComboBox;
using platform::qt::EntryFinder;
using platform::qt::MatchList;
using platform::qt::RepairOrderBox;

const QStringList kOrders{"10112  2010 Stellar Pulse EX", "10117  2012 Dorado Mesa",
                          "20112  2012 Hallmark Convoy", "10118  2011 Dorado Llano-Mesa"};

QStringList Numbers(const QString& typed)
{
    QStringList numbers;
    for (const QString& entry : EntryFinder(kOrders).Matching(typed))
        numbers << entry.left(5);
    return numbers;
}

TEST(EntryFinderTest, BeginningOfANumberFindsItsOrders)
{
    EXPECT_EQ(Numbers("1011"), QStringList({"10112", "10117", "10118"}));
    EXPECT_EQ(Numbers("10117"), QStringList({"10117"}));
}

TEST(EntryFinderTest, MiddleOfANumberFindsNothing)
{
    EXPECT_EQ(Numbers("0112"), QStringList());
}

TEST(EntryFinderTest, WordsOfAVehicleFindItInAnyOrderAndCase)
{
    EXPECT_EQ(Numbers("dorado 2012"), QStringList({"10117"}));
    EXPECT_EQ(Numbers("MESA"), QStringList({"10117", "10118"}));
}

TEST(EntryFinderTest, EntriesThatBeginWithTheTextComeFirst)
{
    EXPECT_EQ(Numbers("20"), QStringList({"20112", "10112", "10117", "10118"}));
}

TEST(EntryFinderTest, NothingTypedMatchesNothing)
{
    EXPECT_EQ(Numbers(""), QStringList());
    EXPECT_EQ(Numbers("   "), QStringList());
}

class MatchListTest : public testing::Test {
protected:
    MatchListTest()
    {
        window.resize(700, 500);
        layout.addWidget(&view);
        layout.addStretch(1);
        for (const QString& entry : kOrders)
            box.AddItem(entry.toStdString());
        view.picked = [this] { picked << QString::fromStdString(box.Text()); };
        view.entered = [this] { entered << view.currentText(); };
        window.show();
        (void)QTest::qWaitForWindowActive(&window);
        view.setFocus();
    }
    void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void Key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    bool Offers() const
    {
        const auto* list = window.findChild<MatchList*>();
        return list != nullptr && list->isVisible();
    }
    MatchList& List() { return *window.findChild<MatchList*>(); }

    ComboBox box;
    QWidget window;
    QVBoxLayout layout{&window};
    RepairOrderBox view{box, &window};
    QStringList picked, entered;
};

TEST_F(MatchListTest, NumberIsOfferedBeneathTheField)
{
    Type("1011");
    ASSERT_TRUE(Offers());
    EXPECT_EQ(List().model()->rowCount(), 3);
    EXPECT_EQ(List().y(), view.geometry().bottom() + 1);
    EXPECT_EQ(List().Highlighted(), QString());
}

TEST_F(MatchListTest, EnterWithoutASteppedToEntryIsTheTypedNumber)
{
    Type("1011");
    Key(Qt::Key_Return);
    EXPECT_EQ(entered, QStringList({"1011"}));
    EXPECT_EQ(picked, QStringList());
    EXPECT_FALSE(Offers());
}

TEST_F(MatchListTest, ArrowsStepToAnEntryAndEnterPicksIt)
{
    Type("1011");
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ(List().Highlighted(), kOrders[1]);
    Key(Qt::Key_Up);
    EXPECT_EQ(List().Highlighted(), kOrders[0]);
    EXPECT_TRUE(view.lineEdit()->hasFocus());
    Key(Qt::Key_Return);
    EXPECT_EQ(picked, QStringList({kOrders[0]}));
    EXPECT_EQ(entered, QStringList());
}

TEST_F(MatchListTest, SteppingStopsAtBothEnds)
{
    Type("1011");
    for (int times = 0; times < 9; ++times)
        Key(Qt::Key_Down);
    EXPECT_EQ(List().currentIndex().row(), 2);
    for (int times = 0; times < 9; ++times)
        Key(Qt::Key_Up);
    EXPECT_EQ(List().currentIndex().row(), 0);
}

TEST_F(MatchListTest, TouchPicksAnEntry)
{
    Type("dorado");
    const QPoint second = List().visualRect(List().model()->index(1, 0)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(picked, QStringList({kOrders[3]}));
    EXPECT_FALSE(Offers());
}

TEST_F(MatchListTest, EscapeTakesTheOfferAwayAndLeavesTheText)
{
    Type("1011");
    Key(Qt::Key_Down);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Offers());
    EXPECT_EQ(view.currentText(), QString("1011"));
    Key(Qt::Key_Return);
    EXPECT_EQ(entered, QStringList({"1011"}));
}

TEST_F(MatchListTest, NothingThatMatchesTakesTheOfferAway)
{
    Type("1011");
    EXPECT_TRUE(Offers());
    Type("99");
    EXPECT_FALSE(Offers());
    EXPECT_EQ(view.currentText(), QString("101199"));
}

TEST_F(MatchListTest, TypingIntoTheOpenedListGoesOnInTheField)
{
    view.showPopup();
    ASSERT_TRUE(view.view()->isVisible());
    QTest::keyClick(view.view(), Qt::Key_M);
    EXPECT_FALSE(view.view()->isVisible());
    EXPECT_EQ(view.currentText(), QString("m"));
    ASSERT_TRUE(Offers());
    EXPECT_EQ(List().model()->rowCount(), 2);
}

TEST_F(MatchListTest, OpeningTheWholeListTakesTheOfferAway)
{
    Type("1011");
    view.showPopup();
    EXPECT_FALSE(Offers());
    view.hidePopup();
}

TEST_F(MatchListTest, GoesWhenTheKeyboardLeavesTheField)
{
    Type("1011");
    view.clearFocus();
    EXPECT_FALSE(Offers());
}

TEST_F(MatchListTest, EntriesAreLargeEnoughForAThumbAndTheListIsTold)
{
    Type("1011");
    EXPECT_GE(List().sizeHintForRow(0), 48);
    EXPECT_EQ(List().accessibleName(), QString("lstMatches"));
    EXPECT_EQ(List().accessibleDescription(), QString("Repair orders that match what is typed"));
}

TEST_F(MatchListTest, EntryWiderThanItsListGivesWayAtItsEnd)
{
    box.AddItem("10119  " + std::string(200, 'w'));
    Type("1011");
    EXPECT_EQ(List().visualRect(List().model()->index(3, 0)).width(), List().viewport()->width());
    EXPECT_LE(List().geometry().right(), view.geometry().right());
    EXPECT_GE(List().geometry().left(), 0);
}

}  // namespace
}  // namespace tests
