// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt/KeyPad.cpp, in the prompt that it belongs to.
#include "platform/qt/KeyPad.h"

#include "platform/qt/InputBox.h"
#include "tools/demo/Hands.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::qt::InputBox;
using platform::qt::KeyPad;

class KeyPadTest : public testing::Test {
protected:
    KeyPadTest()
    {
        prompt.show();
        (void)QTest::qWaitForWindowActive(&prompt);
    }
    QPushButton& Key(const char* caption)
    {
        QPushButton* found = nullptr;
        for (auto* key : pad.findChildren<QPushButton*>())
            if (key->text() == caption && key->isVisible()) found = key;
        if (found == nullptr) throw std::logic_error(std::string("no key ") + caption);
        return *found;
    }
    void Touch(std::initializer_list<const char*> captions)
    {
        for (const char* caption : captions)
            QTest::mouseClick(&Key(caption), Qt::LeftButton);
    }
    std::string Text() const { return line.text().toStdString(); }

    InputBox prompt{nullptr, {.text = "Please enter your PIN", .title = "Enter PIN"}};
    QLineEdit& line = demo::Find<QLineEdit>(prompt, "txtInput");
    KeyPad& pad = static_cast<KeyPad&>(demo::Find<QWidget>(prompt, "keyPad"));
};

TEST_F(KeyPadTest, EachDigitTypesItself)
{
    Touch({"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"});
    EXPECT_EQ(Text(), "1234567890");
}

TEST_F(KeyPadTest, EraseTakesTheLastDigitAndThenNothing)
{
    Touch({"1", "2", "Erase"});
    EXPECT_EQ(Text(), "1");
    Touch({"Erase", "Erase"});
    EXPECT_EQ(Text(), "");
}

TEST_F(KeyPadTest, TouchTakesTheKeyboardFromTheLineNever)
{
    Touch({"1"});
    EXPECT_TRUE(line.hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), "2");
    Touch({"3"});
    EXPECT_EQ(Text(), "123");
}

TEST_F(KeyPadTest, EnterAfterTouchedDigitsIsOk)
{
    Touch({"7", "7"});
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(prompt.isVisible());
    EXPECT_EQ(prompt.result(), QDialog::Accepted);
    EXPECT_EQ(Text(), "77");
}

TEST_F(KeyPadTest, LettersAreOnASecondPageAndShiftMakesThemCapitals)
{
    EXPECT_THROW((void)Key("q"), std::logic_error);
    Touch({"ABC", "p", "Shift", "I", "N", "Shift", "x", "Erase", "123", "4"});
    EXPECT_EQ(Text(), "pIN4");
}

TEST_F(KeyPadTest, TypedTextReplacesWhatIsMarked)
{
    Touch({"1", "2", "3"});
    line.selectAll();
    Touch({"9"});
    EXPECT_EQ(Text(), "9");
}

TEST_F(KeyPadTest, NoMoreIsTypedThanThePromptTakes)
{
    line.setText(QString(254, '1'));
    Touch({"2"});
    EXPECT_EQ(Text(), std::string(254, '1'));
}

TEST_F(KeyPadTest, EveryKeyOfBothPagesIsLargeEnoughForAThumb)
{
    const auto expectLarge = [this](const char* page, qsizetype keys) {
        const auto all = demo::Find<QWidget>(pad, page).findChildren<QPushButton*>();
        EXPECT_EQ(all.size(), keys);
        for (const QPushButton* key : all) {
            EXPECT_TRUE(key->isVisible());
            EXPECT_GE(std::min(key->width(), key->height()), 48) << key->text().toStdString();
        }
    };
    expectLarge("digits", 12);
    Touch({"ABC"});
    expectLarge("letters", 29);
}

TEST_F(KeyPadTest, EveryKeyIsToldByItsCaption)
{
    for (auto* key : pad.findChildren<QPushButton*>()) {
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(key);
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(told->text(QAccessible::Name).toStdString(), key->text().toStdString());
        EXPECT_EQ(told->role(), key->isCheckable() ? QAccessible::CheckBox : QAccessible::Button);
    }
}

}  // namespace
}  // namespace tests
