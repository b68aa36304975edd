// SPDX-License-Identifier: Apache-2.0
// Tests of app/ui/frmSplashView.cpp and data/ui/frmProcMsgView.cpp
#include "app/ui/QtDialogs.h"
#include "tests/support/ShellFixture.h"
#include "tools/demo/Hands.h"

#include <QGroupBox>
#include <QLabel>
#include <QScreen>

namespace tests {
namespace {

constexpr int kBelowTheMiddle = 12;  // pixels: 180 twips

class SmallWindowsTest : public ShellFixture {
protected:
    lodrin::ui::QtDialogs qt;
    lodrin::Shop real{qt, services, engine};
};

TEST_F(SmallWindowsTest, SplashShowsItsOneLabel)
{
    fakes.files.Write("C:/Lodrin/Ostrel.ini", "[FileLoc]\r\nOstrel=C:\\Tarvex\\Data\r\n");
    qt.ShowSplash(real);
    QWidget& splash = demo::Window("frmSplash");
    EXPECT_EQ(demo::Find<QLabel>(splash, "lblVersion").text().toStdString(),
              "Version 1.0.5          Database Path - C:\\Tarvex\\Data");
    qt.UnloadSplash(real);
    EXPECT_THROW((void)demo::Window("frmSplash"), std::logic_error);
}

TEST_F(SmallWindowsTest, SplashStandsInTheMiddleAndAHundredAndEightyTwipsBelow)
{
    qt.ShowSplash(real);
    const QWidget& splash = demo::Window("frmSplash");
    const QRect screen = splash.screen()->geometry();
    const QRect place = splash.frameGeometry();
    EXPECT_EQ(place.left(), (screen.width() - place.width()) / 2);
    EXPECT_EQ(place.top(), (screen.height() - place.height()) / 2 + kBelowTheMiddle);
    qt.UnloadSplash(real);
}

TEST_F(SmallWindowsTest, ProcessingWindowTellsItsStepAndHoldsNobodyUp)
{
    qt.ShowProcMsg(real);
    QWidget& window = demo::Window("frmProcMsg");
    EXPECT_FALSE(window.isModal());
    EXPECT_EQ(window.windowTitle().toStdString(), "Form1");
    auto& frame = demo::Find<QGroupBox>(window, "Frame1");
    real.forms.procMsg.Label1.SetCaption("Synchronizing LD - Processing employees");
    EXPECT_EQ(demo::Find<QLabel>(frame, "Label1").text().toStdString(),
              "Synchronizing LD - Processing employees");
    qt.UnloadProcMsg(real);
    EXPECT_THROW((void)demo::Window("frmProcMsg"), std::logic_error);
}

}  // namespace
}  // namespace tests
