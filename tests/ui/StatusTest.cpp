// SPDX-License-Identifier: Apache-2.0
// Tests of setup/ui/frmStatusView.cpp and of typing into a grid (platform/qt: CellEditor,
// GridWidget)
#include "app/ui/QtDialogs.h"
#include "base/NumberedError.h"
#include "setup/mnuSetup.h"
#include "tests/support/ShopFixture.h"
#include "tests/ui/Robot.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <map>

namespace tests {
namespace {

using Map = std::map<std::string, std::string>;

// The window over real dialogs, its boxes answered by the fixture's scripted user.
class StatusTest : public ShopFixture {
protected:
    void SetUp() override
    {
        GivenNo("Status").Given(
            {LaborType("BL", "Body"), LaborType("FL", "Frame"), LaborType("RL", "Refinish")});
        qt.leave = [](int) { FAIL() << "the program ended"; };
        real.state.database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
        real.values.DataPath = shop.values.DataPath;
    }
    // Opens the window; `user` acts in it. Rule: he leaves it, or the test fails.
    void Show(const std::function<void(QDialog&, QTableView&)>& user)
    {
        Robot robot;
        robot.Then([&](QDialog& window) {
            (void)QTest::qWaitForWindowActive(&window);
            user(window, demo::Find<QTableView>(window, "grdStatus"));
            // A button pressed by its key goes down for a moment before it acts.
            EXPECT_TRUE(QTest::qWaitFor([&window] { return !window.isVisible(); }, 2000))
                << "the window was not left";
            if (window.isVisible()) window.done(-1);
        });
        lodrin::mnuSetupItems_Click(real, 0);
    }
    // The open cell; those that were closed go with the next turn of the event loop.
    static QLineEdit* Line(QTableView& grid)
    {
        for (auto* line : grid.findChildren<QLineEdit*>("cellEditor"))
            if (line->isVisible()) return line;
        return nullptr;
    }
    static void Press(int key, Qt::KeyboardModifiers with = {})
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), with);
    }
    static void Write(const QString& text)
    {
        for (const QChar each : text)
            QTest::keyClick(QApplication::focusWidget(), each.toLatin1());
    }
    static void Click(QTableView& grid, int row, int column)
    {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                          grid.visualRect(grid.model()->index(row, column)).center());
    }
    static void Exit(QDialog& window) { demo::Find<QPushButton>(window, "cmdExit").click(); }
    static QString Shown(QTableView& grid, int row)
    {
        return grid.model()->index(row, 4).data().toString();
    }
    Map Wordings()
    {
        Map wordings;
        for (const Record& row : Rows("SELECT * FROM Status"))
            wordings[row.Text("GLType")] = row.Text("Description");
        return wordings;
    }
    void ExpectRefusal(int number)
    {
        fakes.prompts.Expect("The description was not stored.\r\n\r\n" + base::ErrorText(number) +
                             (number == 3163 ? "\r\n\r\nA description has room for 75 characters; "
                                               "yours has 80."
                                             : "") +
                             "\r\n\r\nWhat you typed is still there. Escape brings the stored "
                             "description back.");
    }

    lodrin::ui::QtDialogs qt;
    lodrin::Shop real{qt, services, engine};
    const Map stored{{"BL", "Body"}, {"FL", "Frame"}, {"RL", "Refinish"}};
};

TEST_F(StatusTest, ShowsTheThreeColumnsAndNamesItsControls)
{
    Show([](QDialog& window, QTableView& grid) {
        EXPECT_EQ(window.objectName().toStdString(), "frmStatus");
        EXPECT_EQ(window.windowTitle().toStdString(), "Status Descriptions");
        QStringList captions;
        for (int place = 0; place < grid.horizontalHeader()->count(); ++place)
            if (const int column = grid.horizontalHeader()->logicalIndex(place);
                !grid.isColumnHidden(column))
                captions << grid.model()->headerData(column, Qt::Horizontal).toString();
        EXPECT_EQ(captions.join(" | ").toStdString(),
                  "GL Type | GL Description | Status Description");
        EXPECT_EQ(grid.accessibleName().toStdString(), "grdStatus");
        EXPECT_FALSE(grid.accessibleDescription().isEmpty());
        EXPECT_EQ(demo::Find<QPushButton>(window, "cmdExit").text().toStdString(), "&Exit");
        EXPECT_TRUE(grid.hasFocus());
        Exit(window);
    });
}

TEST_F(StatusTest, EverythingThatIsTouchedIsLargeEnoughForAThumb)
{
    Show([](QDialog& window, QTableView& grid) {
        EXPECT_GE(grid.rowHeight(0), 48);
        EXPECT_GE(demo::Find<QPushButton>(window, "cmdExit").height(), 48);
        Exit(window);
    });
}

TEST_F(StatusTest, LettersReplaceTheWordingAndEnterStoresIt)
{
    Show([this](QDialog& window, QTableView& grid) {
        Press(Qt::Key_Down);
        Write("Rails");
        ASSERT_NE(Line(grid), nullptr);
        EXPECT_EQ(Line(grid)->text().toStdString(), "Rails");
        EXPECT_EQ(Line(grid)->accessibleName().toStdString(), "Status Description");
        EXPECT_EQ(Wordings(), stored);
        Press(Qt::Key_Return);
        EXPECT_EQ(Wordings().at("FL"), "Rails");
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(grid.hasFocus());
        EXPECT_EQ(grid.currentIndex().row(), 1);
        Exit(window);
    });
    EXPECT_EQ(Wordings(), (Map{{"BL", "Body"}, {"FL", "Rails"}, {"RL", "Refinish"}}));
}

TEST_F(StatusTest, F2EnterSpaceAndDoubleClickOpenTheWordingWithItsText)
{
    Show([](QDialog& window, QTableView& grid) {
        for (const int key : {Qt::Key_F2, Qt::Key_Return, Qt::Key_Space}) {
            Press(key);
            ASSERT_NE(Line(grid), nullptr) << key;
            EXPECT_EQ(Line(grid)->text().toStdString(), "Body");
            Press(Qt::Key_Escape);
            EXPECT_EQ(Line(grid), nullptr);
        }
        // On whichever cell of the row.
        Click(grid, 2, 2);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {},
                           grid.visualRect(grid.model()->index(2, 2)).center());
        ASSERT_NE(Line(grid), nullptr);
        EXPECT_EQ(Line(grid)->text().toStdString(), "Refinish");
        Press(Qt::Key_Escape);
        Exit(window);
    });
}

TEST_F(StatusTest, EscapeLeavesTheStoredWordingAndASecondOneTheWindow)
{
    Show([this](QDialog& window, QTableView& grid) {
        Write("Nonsense");
        Press(Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Shown(grid, 0).toStdString(), "Body");
        EXPECT_EQ(Wordings(), stored);
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(Wordings(), stored);
}

TEST_F(StatusTest, TabStoresAndGoesOnToTheNextRowAndAtLastToExit)
{
    Show([this](QDialog& window, QTableView& grid) {
        Write("One");
        Press(Qt::Key_Tab);
        EXPECT_EQ(grid.currentIndex().row(), 1);
        Write("Two");
        Press(Qt::Key_Tab);
        Write("Three");
        Press(Qt::Key_Tab);
        EXPECT_EQ(Wordings(), (Map{{"BL", "One"}, {"FL", "Two"}, {"RL", "Three"}}));
        EXPECT_TRUE(demo::Find<QPushButton>(window, "cmdExit").hasFocus());
        Press(Qt::Key_Space);
    });
}

TEST_F(StatusTest, ShiftTabGoesBackARow)
{
    Show([this](QDialog& window, QTableView& grid) {
        Press(Qt::Key_Down);
        Write("Two");
        Press(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(grid.currentIndex().row(), 0);
        Write("One");
        Press(Qt::Key_Return);
        EXPECT_EQ(Wordings(), (Map{{"BL", "One"}, {"FL", "Two"}, {"RL", "Refinish"}}));
        Exit(window);
    });
}

TEST_F(StatusTest, ArrowDownStoresAndGoesDown)
{
    Show([this](QDialog& window, QTableView& grid) {
        Write("One");
        Press(Qt::Key_Down);
        EXPECT_EQ(grid.currentIndex().row(), 1);
        EXPECT_EQ(Wordings().at("BL"), "One");
        Exit(window);
    });
}

TEST_F(StatusTest, ShiftAndOtherKeysAloneDoNotEndTheTyping)
{
    Show([this](QDialog& window, QTableView& grid) {
        Write("On");
        for (const int key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_CapsLock})
            Press(key);
        Write("e");
        EXPECT_EQ(Wordings(), stored);
        ASSERT_NE(Line(grid), nullptr);
        EXPECT_EQ(Line(grid)->text().toStdString(), "One");
        Exit(window);
    });
    EXPECT_EQ(Wordings().at("BL"), "One");
}

TEST_F(StatusTest, ClickOnAnotherRowStores)
{
    Show([this](QDialog& window, QTableView& grid) {
        Write("One");
        Click(grid, 2, 3);
        EXPECT_EQ(Wordings().at("BL"), "One");
        EXPECT_EQ(grid.currentIndex().row(), 2);
        EXPECT_EQ(real.forms.status->grdStatus.Row(), 3);
        Exit(window);
    });
}

TEST_F(StatusTest, PendingWordingIsStoredBeforeExitByClickKeyOrCloseBox)
{
    Show([](QDialog& window, QTableView&) {
        Write("Clicked");
        auto& exit = demo::Find<QPushButton>(window, "cmdExit");
        QTest::mouseClick(&exit, Qt::LeftButton);
    });
    EXPECT_EQ(Wordings().at("BL"), "Clicked");
    Show([](QDialog&, QTableView&) {
        Write("By key");
        Press(Qt::Key_E, Qt::AltModifier);
    });
    EXPECT_EQ(Wordings().at("BL"), "By key");
    Show([](QDialog& window, QTableView&) {
        Write("Closed");
        window.close();
    });
    EXPECT_EQ(Wordings().at("BL"), "Closed");
}

TEST_F(StatusTest, RefusedWordingStaysInTheLineUntilItIsMendedOrGivenUp)
{
    const QString tooLong(80, 'x');
    ExpectRefusal(3163);
    ExpectRefusal(3163);
    ExpectRefusal(3163);
    Show([&](QDialog& window, QTableView& grid) {
        Write(tooLong);
        Press(Qt::Key_Return);
        ASSERT_NE(Line(grid), nullptr);
        EXPECT_EQ(Line(grid)->text(), tooLong);
        EXPECT_TRUE(Line(grid)->hasFocus());
        // Neither another row nor Exit takes it away.
        Click(grid, 2, 3);
        EXPECT_EQ(grid.currentIndex().row(), 0);
        Exit(window);
        EXPECT_TRUE(window.isVisible());
        ASSERT_NE(Line(grid), nullptr);
        EXPECT_EQ(Line(grid)->text(), tooLong);
        EXPECT_EQ(Wordings(), stored);
        Press(Qt::Key_Escape);
        EXPECT_EQ(Shown(grid, 0).toStdString(), "Body");
        Exit(window);
    });
    EXPECT_EQ(Wordings(), stored);
}

TEST_F(StatusTest, RefusedOnceMendedAndStored)
{
    ExpectRefusal(3163);
    Show([&](QDialog& window, QTableView& grid) {
        Write(QString(80, 'x'));
        Press(Qt::Key_Tab);
        ASSERT_NE(Line(grid), nullptr);
        EXPECT_EQ(grid.currentIndex().row(), 0);
        Line(grid)->selectAll();
        Write("Short");
        Press(Qt::Key_Return);
        EXPECT_EQ(Wordings().at("BL"), "Short");
        Exit(window);
    });
}

TEST_F(StatusTest, UntouchedWordingIsNotWritten)
{
    Show([this](QDialog& window, QTableView&) {
        Press(Qt::Key_F2);
        // Somebody else words the row meanwhile; leaving the line must not bring the old text back.
        dao::Database other = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
        dao::Recordset row = other.OpenRecordset("SELECT * FROM Status WHERE GLType = 'BL'");
        row.Edit();
        row["Description"] = "Theirs";
        row.Update();
        Press(Qt::Key_Return);
        Exit(window);
    });
    EXPECT_EQ(Wordings().at("BL"), "Theirs");
}

TEST_F(StatusTest, NothingButTheWordingCanBeTypedInto)
{
    Show([](QDialog& window, QTableView& grid) {
        for (int column = 0; column < 5; ++column)
            EXPECT_EQ(grid.model()->index(0, column).flags().testFlag(Qt::ItemIsEditable),
                      column == 4);
        Exit(window);
    });
}

TEST_F(StatusTest, TheSameWindowComesAgainWithFreshRows)
{
    const QDialog* first = nullptr;
    Show([&](QDialog& window, QTableView&) {
        first = &window;
        Exit(window);
    });
    Given({LedgerAccount("SL", "Structural Labor", true)});
    Show([&](QDialog& window, QTableView& grid) {
        EXPECT_EQ(&window, first);
        EXPECT_EQ(grid.model()->rowCount(), 4);
        EXPECT_EQ(Shown(grid, 3).toStdString(), "Structural");
        Exit(window);
    });
}

TEST_F(StatusTest, EmptyWindowCanBeLeft)
{
    GivenNo("Status");
    Show([](QDialog& window, QTableView& grid) {
        EXPECT_EQ(grid.model()->rowCount(), 0);
        Press(Qt::Key_Return);
        Press(Qt::Key_F2);
        Press(Qt::Key_A);
        Exit(window);
    });
}

}  // namespace
}  // namespace tests
