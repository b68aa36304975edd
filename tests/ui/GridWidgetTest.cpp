// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt: GridModel, GridWidget
#include "platform/qt/GridWidget.h"

#include "floor/grdEmp.h"
#include "tests/support/ShopFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <QVBoxLayout>

namespace tests {
namespace {

using lodrin::LDEmp;
using platform::qt::GridWidget;

class GridWidgetTest : public ShopFixture {
protected:
    GridWidgetTest()
    {
        layout.addWidget(&other);
        layout.addWidget(&view);
        view.moved = [this](int row, int lastRow, int lastColumn) {
            moves.push_back({row, lastRow, lastColumn});
            if (takeMoves) shop.window.grdEmp.SetRow(row);
        };
        view.clickedRow = [this] { ++clicks; };
        window.resize(1000, 400);
    }
    void SetUp() override
    {
        Given({Employee("Adams, Al", 1), Employee("Baker, Bo", 2), Employee("Clark, Cy", 3)});
        Open();
        shop.window.grdEmp.SetRow(1);
        Show();
    }
    void Show()
    {
        window.show();
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
    }
    void Click(int row) { QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Cell(row)); }
    QPoint Cell(int row)
    {
        return view.visualRect(view.model()->index(row - 1, LDEmp::Name.column - 1)).center();
    }
    // As it is before anybody has come to it.
    void ChooseNobody()
    {
        shop.window.grdEmp.SetRow(0);
        view.setFocus(Qt::TabFocusReason);
    }
    bool ShowsNoRow()
    {
        return !view.currentIndex().isValid() && !view.selectionModel()->hasSelection();
    }
    // The columns as they are seen, from left to right.
    QStringList Captions()
    {
        QStringList captions;
        for (int place = 0; place < view.horizontalHeader()->count(); ++place) {
            const int column = view.horizontalHeader()->logicalIndex(place);
            if (!view.isColumnHidden(column))
                captions << view.model()->headerData(column, Qt::Horizontal).toString();
        }
        return captions;
    }
    QString Shown(int row, const lodrin::BoardField& field)
    {
        return view.model()->index(row - 1, field.column - 1).data().toString();
    }

    QWidget window;
    QVBoxLayout layout{&window};
    QWidget other{&window};
    GridWidget view{shop.window.grdEmp, {LDEmp::VehDesc.column, LDEmp::Customer.column}, &window};
    std::vector<std::array<int, 3>> moves;
    int clicks = 0;
    bool takeMoves = true;
};

TEST_F(GridWidgetTest, ShowsTheBoardsColumnsInTheirOrder)
{
    EXPECT_EQ(Captions().join(" | ").toStdString(),
              "Employee | Start Day | Type | Vehicle | Customer | WO # | Job Start | End Day");
}

TEST_F(GridWidgetTest, KeepsEveryFieldBehindTheHiddenColumns)
{
    EXPECT_EQ(view.model()->columnCount(), 12);
    EXPECT_TRUE(view.isColumnHidden(LDEmp::WOID.column - 1));
    EXPECT_EQ(Shown(2, LDEmp::EmpID).toStdString(), "2");
}

TEST_F(GridWidgetTest, ShowsTimesThroughTheirFormat)
{
    shop.window.grdEmp.SetValue(LDEmp::StartDay.column, base::Date{0.38});
    EXPECT_EQ(Shown(1, LDEmp::StartDay).toStdString(), "09:07 AM");
}

TEST_F(GridWidgetTest, BindingStandsOnTheFirstRowAndRaisesNothing)
{
    EXPECT_EQ(view.currentIndex().row(), 0);
    EXPECT_TRUE(moves.empty());
    EXPECT_EQ(clicks, 0);
}

TEST_F(GridWidgetTest, FocusRaisesNothing)
{
    view.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(view.hasFocus());
    EXPECT_TRUE(moves.empty());
}

TEST_F(GridWidgetTest, WithoutACurrentRowNoneIsShownAndTheFocusAloneChoosesNone)
{
    ChooseNobody();
    EXPECT_TRUE(view.hasFocus());
    EXPECT_TRUE(ShowsNoRow());
    other.setFocusPolicy(Qt::StrongFocus);
    other.setFocus();
    shop.window.grdEmp.Bind(shop.state.employees);
    shop.window.grdEmp.SetRow(0);
    view.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(ShowsNoRow());
    EXPECT_TRUE(moves.empty());
}

TEST_F(GridWidgetTest, FirstArrowKeyChoosesTheFirstRow)
{
    ChooseNobody();
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(moves, (std::vector<std::array<int, 3>>{{1, 0, 0}}));
    EXPECT_EQ(view.currentIndex().row(), 0);
}

TEST_F(GridWidgetTest, FirstLetterChoosesANameAndTheNextOneGoesOnFromIt)
{
    Given({Employee("Clay, Di", 1000)});
    shop.state.employees.Requery();
    shop.window.grdEmp.Bind(shop.state.employees);
    lodrin::EmpView(shop);
    ChooseNobody();
    QTest::keyClicks(&view, "c");
    EXPECT_EQ(moves, (std::vector<std::array<int, 3>>{{3, 0, 0}}));
    QTest::keyClicks(&view, "lay");
    EXPECT_EQ(shop.window.grdEmp.Row(), 4);
}

TEST_F(GridWidgetTest, NumberOfAHiddenColumnChoosesNobody)
{
    ChooseNobody();
    QTest::keyClicks(&view, "1");
    EXPECT_TRUE(ShowsNoRow());
    EXPECT_TRUE(moves.empty());
}

TEST_F(GridWidgetTest, EnterWithoutACurrentRowIsNothing)
{
    ChooseNobody();
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(moves.empty());
    EXPECT_EQ(clicks, 0);
}

TEST_F(GridWidgetTest, FirstMoveThatWasDroppedLeavesNoRowShown)
{
    ChooseNobody();
    takeMoves = false;
    Click(2);
    QCoreApplication::processEvents();
    EXPECT_TRUE(ShowsNoRow());
}

TEST_F(GridWidgetTest, FocusOnAnEmptyBoardRaisesNothing)
{
    shop.window.grdEmp.Reset();
    view.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(moves.empty());
    EXPECT_FALSE(view.currentIndex().isValid());
}

TEST_F(GridWidgetTest, ClickOnTheCurrentRowIsAClickOnly)
{
    Click(1);
    EXPECT_EQ(clicks, 1);
    for (const auto& move : moves)
        EXPECT_EQ(move[0], move[1]) << "only to another column of the same row";
}

TEST_F(GridWidgetTest, ClickOnAnotherRowIsAMoveThenAClick)
{
    Click(3);
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0][0], 3);
    EXPECT_EQ(moves[0][1], 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(shop.window.grdEmp.Row(), 3);
}

TEST_F(GridWidgetTest, ArrowKeyIsAMoveOnly)
{
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Down);
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0][0], 2);
    EXPECT_EQ(clicks, 0);
}

TEST_F(GridWidgetTest, EnterOnTheCurrentRowIsAClick)
{
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
}

TEST_F(GridWidgetTest, ClickBesideTheRowsIsNothing)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Cell(3) + QPoint(0, 60));
    EXPECT_TRUE(moves.empty());
    EXPECT_EQ(clicks, 0);
}

TEST_F(GridWidgetTest, RowChosenByTheProgramIsShownAndRaisesNothing)
{
    shop.window.grdEmp.SetRow(3);
    EXPECT_EQ(view.currentIndex().row(), 2);
    EXPECT_TRUE(moves.empty());
}

TEST_F(GridWidgetTest, RebindingRaisesNothing)
{
    Click(3);
    moves.clear();
    shop.window.grdEmp.Bind(shop.state.employees);
    EXPECT_EQ(view.currentIndex().row(), 0);
    EXPECT_TRUE(moves.empty());
}

TEST_F(GridWidgetTest, MoveThatWasDroppedIsTakenBack)
{
    takeMoves = false;
    Click(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.currentIndex().row(), 0);
}

TEST_F(GridWidgetTest, TabLeavesTheBoard)
{
    other.setFocusPolicy(Qt::StrongFocus);
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Tab);
    EXPECT_FALSE(view.hasFocus());
}

TEST_F(GridWidgetTest, RowsAreLargeEnoughForAThumb)
{
    EXPECT_GE(view.rowHeight(0), 48);
}

TEST_F(GridWidgetTest, VehicleAndCustomerTakeTheRoomThatIsLeft)
{
    window.resize(1600, 400);
    QCoreApplication::processEvents();
    int shown = 0;
    for (int column = 0; column < view.model()->columnCount(); ++column)
        shown += view.columnWidth(column);
    EXPECT_NEAR(shown, view.viewport()->width(), 1);
    EXPECT_NEAR(view.columnWidth(LDEmp::VehDesc.column - 1),
                view.columnWidth(LDEmp::Customer.column - 1), 1);
}

TEST_F(GridWidgetTest, ATimeFitsItsColumn)
{
    window.resize(640, 400);
    QCoreApplication::processEvents();
    for (const int column : {LDEmp::StartDay.column, LDEmp::StartJob.column, LDEmp::EndDay.column})
        EXPECT_GE(view.columnWidth(column - 1),
                  view.fontMetrics().horizontalAdvance("05:55 PM") + 18);
}

TEST_F(GridWidgetTest, NobodyTypesIntoTheBoard)
{
    EXPECT_EQ(view.editTriggers(), QAbstractItemView::NoEditTriggers);
    EXPECT_FALSE(view.model()->index(0, 2).flags() & Qt::ItemIsEditable);
}

TEST_F(GridWidgetTest, EmployeeWhoComesWithALaterBindingIsShown)
{
    Given({Employee("Abel, Abe", 4)});
    shop.state.employees.Requery();
    shop.window.grdEmp.Bind(shop.state.employees);
    EXPECT_EQ(view.model()->rowCount(), 4);
    EXPECT_EQ(Shown(1, LDEmp::Name).toStdString(), "Abel, Abe");
}

}  // namespace
}  // namespace tests
