// SPDX-License-Identifier: Apache-2.0
// Tests of floor/ui/frmGLSelectView.cpp
#include "floor/ui/frmGLSelectView.h"
#include "tests/support/ShopFixture.h"
#include "tests/ui/Robot.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace tests {
namespace {

class GLSelectTest : public ShopFixture {
protected:
    // Loads and shows the dialog, lets the robot act in it, and waits until it is left.
    void Show(const demo::Robot::Step& step)
    {
        Open();
        shop.forms.glSelect.Form_Load(shop);
        Robot robot;
        robot.Then(step);
        const lodrin::EventGate::Window level(shop.gate, lodrin::EventGate::Modal::Dialog);
        lodrin::ui::frmGLSelectView(shop, {shop, [](int) { FAIL() << "the program ended"; }},
                                    nullptr)
            .Wait();
    }
    static QListWidget* List(QDialog& dialog, const char* name)
    {
        return dialog.findChild<QListWidget*>(name);
    }
    static void Click(QListWidget* list, int row)
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row)).center());
    }
};

TEST_F(GLSelectTest, ShowsItsListsUnderTheirTitles)
{
    Show([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), "Select Labor Type");
        EXPECT_EQ(List(dialog, "lstGLCodes")->item(0)->text().toStdString(), "BL Body Labor");
        EXPECT_EQ(List(dialog, "lstGLCodes")->currentRow(), 0);
        EXPECT_EQ(List(dialog, "lstDepartments")->item(0)->text().toStdString(), "Body");
        EXPECT_EQ(List(dialog, "lstProgress")->count(), 1);
        QStringList titles;
        for (const char* name : {"lbllstGLCodes", "lbllstDepartments", "lbllstProgress"})
            titles << dialog.findChild<QLabel*>(name)->text().remove('&');
        EXPECT_EQ(titles.join(", ").toStdString(), "Labor Codes, Departments, Progress");
        EXPECT_EQ(dialog.findChild<QLabel*>("lblHelp")->text().toStdString(),
                  "Select the desired Labor Type and Department for this entry then press okay.");
        dialog.reject();
    });
}

TEST_F(GLSelectTest, FocusStandsOnTheLaborCodes)
{
    Show([](QDialog& dialog) {
        auto* codes = List(dialog, "lstGLCodes");
        EXPECT_TRUE(QTest::qWaitFor([codes] { return codes->hasFocus(); }, 2000));
        dialog.reject();
    });
}

TEST_F(GLSelectTest, ConfirmingWritesTheChoice)
{
    Show([](QDialog& dialog) {
        Click(List(dialog, "lstGLCodes"), 4);
        Click(List(dialog, "lstDepartments"), 1);
        dialog.findChild<QPushButton*>("cmdExit")->click();
    });
    EXPECT_EQ(shop.state.GLCode, shop.forms.glSelect.lstGLCodes.List(4).substr(0, 2));
    EXPECT_EQ(shop.state.Department, "Paint");
    EXPECT_EQ(shop.state.Sequence, 70);
}

TEST_F(GLSelectTest, EnterConfirms)
{
    Show([](QDialog& dialog) {
        QTest::keyClick(List(dialog, "lstGLCodes"), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(shop.state.GLCode, "BL");
}

TEST_F(GLSelectTest, EscapeLeavesNoChoice)
{
    Show([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(shop.state.GLCode, "");
}

TEST_F(GLSelectTest, CloseBoxLeavesNoChoice)
{
    Show([](QDialog& dialog) { dialog.close(); });
    EXPECT_EQ(shop.state.GLCode, "");
}

TEST_F(GLSelectTest, NothingCanBeConfirmedWithoutADepartment)
{
    GivenNo("Departments");
    Show([](QDialog& dialog) {
        auto* okay = dialog.findChild<QPushButton*>("cmdExit");
        EXPECT_FALSE(okay->isEnabled());
        okay->click();
        QTest::keyClick(List(dialog, "lstGLCodes"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(shop.state.GLCode, "");
}

TEST_F(GLSelectTest, NothingCanBeConfirmedWithoutALaborType)
{
    GivenNo("Status");
    Show([](QDialog& dialog) {
        EXPECT_EQ(List(dialog, "lstGLCodes")->count(), 0);
        EXPECT_GT(List(dialog, "lstDepartments")->count(), 0);
        auto* okay = dialog.findChild<QPushButton*>("cmdExit");
        EXPECT_FALSE(okay->isEnabled());
        okay->click();
        QTest::keyClick(List(dialog, "lstDepartments"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(shop.state.GLCode, "");
    EXPECT_EQ(shop.state.Department, "");
}

TEST_F(GLSelectTest, UnloadedFormNoLongerReachesTheWindow)
{
    Show([](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(shop.forms.glSelect.close);
    EXPECT_FALSE(shop.forms.glSelect.setFocusToGLCodes);
}

}  // namespace
}  // namespace tests
