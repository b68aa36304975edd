// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt: message boxes, the input prompt and the file dialog.
#include "base/NumberedError.h"
#include "platform/qt/MessageBox.h"
#include "platform/qt/QtPointer.h"
#include "platform/qt/QtPrompts.h"
#include "tests/support/Samples.h"
#include "tests/ui/Robot.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <fstream>

namespace tests {
namespace {

using namespace platform;
using namespace platform::qt;

class PromptsTest : public testing::Test {
protected:
    QtPrompts prompts;
    Robot robot;
};

TEST_F(PromptsTest, OkBoxAnswersOkToEscape)
{
    robot.Then([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(prompts.Show({.text = "Invalid PIN entered"}), Answer::Ok);
}

TEST_F(PromptsTest, OkBoxAnswersOkToItsCloseBox)
{
    robot.Then([](QDialog& box) { box.close(); });
    EXPECT_EQ(prompts.Show({.text = "Invalid PIN entered"}), Answer::Ok);
}

TEST_F(PromptsTest, YesNoBoxStaysOnEscapeAndClose)
{
    robot.Then([](QDialog& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_TRUE(box.isVisible());
        box.close();
        EXPECT_TRUE(box.isVisible());
        QTest::keyClick(&box, Qt::Key_N);
        EXPECT_TRUE(QTest::qWaitFor([&box] { return !box.isVisible(); }, 2000));
    });
    EXPECT_EQ(prompts.Show({.text = "Go on?", .buttons = Buttons::YesNo}), Answer::No);
}

TEST_F(PromptsTest, YesNoBoxTakesEnterAsYes)
{
    robot.Then([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(prompts.Show({.text = "Go on?", .buttons = Buttons::YesNo}), Answer::Yes);
}

TEST_F(PromptsTest, BoxShowsPlainTextWithItsTitleAndNoIcon)
{
    robot.Then([](QDialog& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text().toStdString(), "<b>Smith</b> & Sons\nsecond line");
        EXPECT_EQ(box.windowTitle().toStdString(), "Duplicate Program");
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        EXPECT_EQ(box.objectName().toStdString(), "MsgBox");
        box.accept();
    });
    prompts.Show({.text = "<b>Smith</b> & Sons\r\nsecond line", .title = "Duplicate Program"});
}

TEST_F(PromptsTest, BoxWithoutATitleCarriesTheProgramsOwn)
{
    robot.Then([](QDialog& box) {
        EXPECT_EQ(box.windowTitle().toStdString(), "Lodrin");
        box.accept();
    });
    prompts.Show({.text = "x", .icon = Icon::Critical});
}

TEST_F(PromptsTest, ButtonsAreLargeEnoughForAThumb)
{
    robot.Then([](QDialog& window) {
        const auto* yes = dynamic_cast<QMessageBox&>(window).button(QMessageBox::Yes);
        EXPECT_GE(yes->height(), 48);
        window.done(QMessageBox::Yes);
    });
    prompts.Show({.text = "Go on?", .buttons = Buttons::YesNo});
}

TEST_F(PromptsTest, HourglassRestsWhileABoxIsOpen)
{
    QtPointer pointer;
    pointer.Hourglass();
    robot.Then([](QDialog& box) {
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        box.accept();
    });
    prompts.Show({.text = "x"});
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    pointer.Default();
}

TEST_F(PromptsTest, InputAnswersWhatWasTypedUntrimmed)
{
    robot.Then([](QDialog& prompt) {
        auto* line = prompt.findChild<QLineEdit*>("txtInput");
        EXPECT_TRUE(line->text().isEmpty());
        EXPECT_EQ(line->echoMode(), QLineEdit::Normal);
        QTest::keyClicks(line, " 12 34 ");
        QTest::keyClick(line, Qt::Key_Return);
    });
    EXPECT_EQ(prompts.Input({.text = "Please enter your PIN", .title = "Enter PIN"}), " 12 34 ");
}

TEST_F(PromptsTest, CancelledInputIsEmpty)
{
    robot.Then([](QDialog& prompt) {
        QTest::keyClicks(prompt.findChild<QLineEdit*>("txtInput"), "1234");
        QTest::keyClick(&prompt, Qt::Key_Escape);
    });
    EXPECT_EQ(prompts.Input({.text = "Please enter your PIN", .title = "Enter PIN"}), "");
}

TEST_F(PromptsTest, InputStandsInTheMiddleAThirdDownTheScreen)
{
    robot.Then([](QDialog& prompt) {
        const QRect free = prompt.screen()->availableGeometry();
        EXPECT_NEAR(prompt.geometry().center().x(), free.center().x(), 2);
        EXPECT_NEAR(prompt.y(), free.top() + (free.height() - prompt.height()) / 3, 2);
        EXPECT_EQ(prompt.findChild<QLineEdit*>("txtInput")->maxLength(), 254);
        prompt.reject();
    });
    EXPECT_EQ(prompts.Input({.text = "Please enter your PIN", .title = "Enter PIN"}), "");
}

constexpr const char* kFilter = "Ostrel (Kelvaro.mdb)|Kelvaro.mdb|ALL (*.*)|*.*";

TEST_F(PromptsTest, CancelledFileDialogIsAnError)
{
    robot.Then([](QDialog& dialog) { dialog.reject(); });
    try {
        (void)prompts.OpenFile(kFilter);
        FAIL() << "nothing was thrown";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 32755);
        EXPECT_STREQ(error.what(), "Cancel was selected.");
    }
}

TEST_F(PromptsTest, FileDialogShowsTheLabelsAndAnswersTheWholePath)
{
    const ScratchFolder folder;
    const std::string file = (folder.Path() / "Kelvaro.mdb").string();
    std::ofstream(file) << "x";
    robot.Then([&file](QDialog& dialog) {
        const auto* types = dialog.findChild<QComboBox*>("fileTypeCombo");
        EXPECT_EQ(types->itemText(0).toStdString(), "Ostrel (Kelvaro.mdb)");
        EXPECT_EQ(types->itemText(1).toStdString(), "ALL (*.*)");
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(file));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(prompts.OpenFile(kFilter), file);
}

TEST(NameFiltersTest, EveryFileMeansAlsoOneWithoutADot)
{
    const QStringList filters = NameFilters(kFilter);
    ASSERT_EQ(filters.size(), 2);
    EXPECT_EQ(filters[0].toStdString(), "Ostrel (Kelvaro.mdb) (Kelvaro.mdb)");
    EXPECT_EQ(filters[1].toStdString(), "ALL (*.*) (*)");
}

}  // namespace
}  // namespace tests
