// SPDX-License-Identifier: Apache-2.0
// Robot: answers the modal windows of a test, one step each, in order.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QObject>
#include <QPushButton>
#include <QStringList>

#include <deque>
#include <functional>
#include <gtest/gtest.h>

namespace tests {

// Rule: each step must close its window. A window that no step is left for is closed and fails the
//       test, and so does a step that no window came for.
class Robot : public QObject {
public:
    using Step = std::function<void(QDialog& window)>;

    explicit Robot(std::deque<Step> steps = {}) : steps_(std::move(steps)) { startTimer(5); }
    ~Robot() override { EXPECT_TRUE(steps_.empty()) << steps_.size() << " windows never came"; }
    Robot(const Robot&) = delete;
    Robot& operator=(const Robot&) = delete;

    void Then(Step step) { steps_.push_back(std::move(step)); }

    // A step that expects a box with this text and presses one of its buttons.
    void Box(const QString& text, QMessageBox::StandardButton button = QMessageBox::Ok)
    {
        Then([text, button](QDialog& window) {
            auto* box = qobject_cast<QMessageBox*>(&window);
            if (box == nullptr || box->button(button) == nullptr) {
                ADD_FAILURE() << "another window than the box: " << text.toStdString();
                return window.done(-1);
            }
            EXPECT_EQ(box->text().toStdString(), text.toStdString());
            box->button(button)->click();
        });
    }

protected:
    void timerEvent(QTimerEvent*) override
    {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (window == nullptr || window == busyWith_) return;
        if (steps_.empty()) {
            const auto* box = qobject_cast<QMessageBox*>(window);
            ADD_FAILURE() << "unexpected window: " << window->windowTitle().toStdString() << " "
                          << (box != nullptr ? box->text().toStdString() : "");
            return window->done(-1);
        }
        const Step step = std::move(steps_.front());
        steps_.pop_front();
        QDialog* const before = busyWith_;
        busyWith_ = window;
        step(*window);
        busyWith_ = before;
    }

private:
    std::deque<Step> steps_;
    QDialog* busyWith_ = nullptr;
};

}  // namespace tests
