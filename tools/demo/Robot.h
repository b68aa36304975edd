// SPDX-License-Identifier: Apache-2.0
// Robot: answers the program's modal windows, one step each, in order.
#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QObject>

#include <deque>
#include <functional>
#include <string>

namespace demo {

// Rule: each step must close its window. A window that no step is left for is closed and told to
//       `failed`.
class Robot : public QObject {
public:
    using Step = std::function<void(QDialog& window)>;

    explicit Robot(std::function<void(const std::string&)> failed);

    void Then(Step step) { steps_.push_back(std::move(step)); }
    // The step for windows that no other step is left for; none when empty.
    void Otherwise(Step step) { otherwise_ = std::move(step); }
    // Steps whose window has not come yet.
    [[nodiscard]] std::size_t Waiting() const { return steps_.size(); }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] Step Next(const QDialog& window);

    std::deque<Step> steps_;
    Step otherwise_;
    std::function<void(const std::string&)> failed_;
    QDialog* busyWith_ = nullptr;
};

// What a window says: its title, and a box's text.
[[nodiscard]] std::string Says(const QDialog& window);

}  // namespace demo
