// SPDX-License-Identifier: Apache-2.0
// Robot: answers the modal windows of a test, one step each, in order.
#pragma once

#include "tools/demo/Hands.h"
#include "tools/demo/Robot.h"

#include <gtest/gtest.h>

namespace tests {

// Rule: a window that no step is left for fails the test, and so does a step that no window came
//       for.
class Robot : public demo::Robot {
public:
    Robot() : demo::Robot([](const std::string& fault) { ADD_FAILURE() << fault; }) {}
    ~Robot() override { EXPECT_EQ(Waiting(), 0U) << "windows that never came"; }
    Robot(const Robot&) = delete;
    Robot& operator=(const Robot&) = delete;

    // A box with this text comes next, and this button of it is pressed.
    void Box(const std::string& text, QMessageBox::StandardButton button = QMessageBox::Ok)
    {
        Then([text, button](QDialog& window) {
            EXPECT_EQ(demo::Says(window), window.windowTitle().toStdString() + ": " + text);
            demo::Press(window, button);
        });
    }
    void Pin(const std::string& pin)
    {
        Then([pin](QDialog& window) {
            EXPECT_EQ(window.windowTitle().toStdString(), "Enter PIN");
            demo::AnswerPrompt(window, pin);
        });
    }
    void Progress(const std::string& text)
    {
        Then([text](QDialog& window) {
            EXPECT_EQ(window.windowTitle().toStdString(), "Update Progress");
            demo::ChooseProgress(window, text);
        });
    }
    void Labor(const std::string& code, const std::string& department)
    {
        Then([code, department](QDialog& window) {
            EXPECT_EQ(window.windowTitle().toStdString(), "Select Labor Type");
            demo::ChooseLabor(window, code, department);
        });
    }
};

}  // namespace tests
