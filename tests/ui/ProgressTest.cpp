// SPDX-License-Identifier: Apache-2.0
// Tests of floor/ui/frmProgressView.cpp
#include "data/Tables.h"
#include "floor/ui/frmProgressView.h"
#include "tests/support/ShopFixture.h"
#include "tests/ui/Robot.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace tests {
namespace {

class ProgressTest : public ShopFixture {
protected:
    ProgressTest()
    {
        Given({RepairOrder(1001).With("Progress", "Check in"), ProgressText("Waiting for parts"),
               ProgressText("All done")});
        Open();
    }
    // Loads and shows the dialog for 1001, lets the robot act in it, and waits until it is left.
    void Show(const demo::Robot::Step& step)
    {
        shop.forms.progress.lngWOID = EntryOf(1001);
        shop.forms.progress.Form_Load(shop);
        Robot robot;
        robot.Then(step);
        const lodrin::EventGate::Window level(shop.gate, lodrin::EventGate::Modal::Dialog);
        lodrin::ui::frmProgressView(shop, {shop, [](int) { FAIL() << "the program ended"; }},
                                    nullptr)
            .Wait();
    }
    static QListWidget* List(QDialog& dialog)
    {
        return dialog.findChild<QListWidget*>("lstProgress");
    }
    static QPushButton* Button(QDialog& dialog, const char* name)
    {
        return dialog.findChild<QPushButton*>(name);
    }
    static void WaitForFocus(QWidget* widget)
    {
        EXPECT_TRUE(QTest::qWaitFor([widget] { return widget->hasFocus(); }, 2000));
    }
    std::string Progress() { return Order(1001).Text("Progress"); }
    bool Cancelled() const { return shop.forms.progress.isCancelled; }
};

TEST_F(ProgressTest, ShowsItsTextsUnderTheRequest)
{
    Show([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), "Update Progress");
        EXPECT_EQ(dialog.findChild<QLabel*>("lblProgress")->text().toStdString(),
                  "Please update the job progress below.");
        EXPECT_EQ(Button(dialog, "cmdOkay")->text().toStdString(), "Okay");
        EXPECT_EQ(Button(dialog, "cmdCancel")->text().toStdString(), "Cancel");
        ASSERT_EQ(List(dialog)->count(), 3);
        EXPECT_EQ(List(dialog)->item(0)->text().toStdString(), "In the paint booth");
        EXPECT_EQ(List(dialog)->currentRow(), 0);
        dialog.reject();
    });
}

TEST_F(ProgressTest, ControlsTellWhatTheyAreAndFitAThumb)
{
    Show([](QDialog& dialog) {
        EXPECT_EQ(List(dialog)->accessibleName().toStdString(), "lstProgress");
        EXPECT_EQ(List(dialog)->accessibleDescription().toStdString(), "Progress");
        EXPECT_EQ(dialog.findChild<QLabel*>("lblProgress")->buddy(), List(dialog));
        EXPECT_GE(List(dialog)->visualItemRect(List(dialog)->item(0)).height(), 48);
        for (const char* name : {"cmdOkay", "cmdCancel"}) {
            EXPECT_GE(Button(dialog, name)->height(), 48) << name;
            EXPECT_EQ(Button(dialog, name)->accessibleDescription().toStdString(), name);
        }
        EXPECT_TRUE(Button(dialog, "cmdOkay")->isDefault());
        dialog.reject();
    });
}

TEST_F(ProgressTest, ArrowsChooseAndEnterConfirms)
{
    Show([](QDialog& dialog) {
        WaitForFocus(List(dialog));
        QTest::keyClick(List(dialog), Qt::Key_Down);
        QTest::keyClick(List(dialog), Qt::Key_Down);
        QTest::keyClick(List(dialog), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Progress(), "All done");
    EXPECT_FALSE(Cancelled());
}

TEST_F(ProgressTest, EscapeCancels)
{
    Show([](QDialog& dialog) { QTest::keyClick(List(dialog), Qt::Key_Escape); });
    EXPECT_TRUE(Cancelled());
    EXPECT_EQ(Progress(), "Check in");
}

TEST_F(ProgressTest, TabReachesOkayAndCancelAndEnterPressesTheOneWithTheFocus)
{
    Show([](QDialog& dialog) {
        WaitForFocus(List(dialog));
        QTest::keyClick(List(dialog), Qt::Key_Tab);
        EXPECT_TRUE(Button(dialog, "cmdOkay")->hasFocus());
        QTest::keyClick(Button(dialog, "cmdOkay"), Qt::Key_Tab);
        EXPECT_TRUE(Button(dialog, "cmdCancel")->hasFocus());
        QTest::keyClick(Button(dialog, "cmdCancel"), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(Cancelled());
}

TEST_F(ProgressTest, ClickedTextIsStoredByOkay)
{
    Show([](QDialog& dialog) {
        demo::ClickEntry(*List(dialog), 1);
        Button(dialog, "cmdOkay")->click();
    });
    EXPECT_EQ(Progress(), "Waiting for parts");
}

TEST_F(ProgressTest, CancelButtonCancels)
{
    Show([](QDialog& dialog) { Button(dialog, "cmdCancel")->click(); });
    EXPECT_TRUE(Cancelled());
    EXPECT_EQ(Progress(), "Check in");
}

TEST_F(ProgressTest, CloseBoxWritesNothingAndIsNoCancel)
{
    Show([](QDialog& dialog) { dialog.close(); });
    EXPECT_FALSE(Cancelled());
    EXPECT_EQ(Progress(), "Check in");
}

TEST_F(ProgressTest, CloseBoxAfterACancelStaysACancel)
{
    Show([](QDialog& dialog) { Button(dialog, "cmdCancel")->click(); });
    Show([](QDialog& dialog) { dialog.close(); });
    EXPECT_TRUE(Cancelled());
}

TEST_F(ProgressTest, EmptyListCanBeConfirmedByTheKeyboard)
{
    GivenNo("AutoLook");
    Show([](QDialog& dialog) {
        WaitForFocus(List(dialog));
        EXPECT_EQ(List(dialog)->count(), 0);
        QTest::keyClick(List(dialog), Qt::Key_Return);
    });
    EXPECT_EQ(Progress(), "");
    EXPECT_FALSE(Cancelled());
}

TEST_F(ProgressTest, LongTextsAndALargeFontStillLeaveTheButtonsOnTheScreen)
{
    Given({ProgressText(std::string(100, 'W'))});
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    QApplication::setFont(large);
    Show([](QDialog& dialog) {
        for (const char* name : {"cmdOkay", "cmdCancel"})
            EXPECT_TRUE(dialog.rect().contains(Button(dialog, name)->geometry())) << name;
        dialog.reject();
    });
    QApplication::setFont(usual);
}

TEST_F(ProgressTest, UnloadedFormNoLongerReachesTheWindow)
{
    Show([](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(shop.forms.progress.close);
}

}  // namespace
}  // namespace tests
