// SPDX-License-Identifier: Apache-2.0
#include "tools/demo/Robot.h"

#include <QApplication>

namespace demo {

namespace {

constexpr int kMilliseconds = 5;
constexpr int kAbandoned = -1;

}  // namespace

std::string Says(const QDialog& window)
{
    const auto* box = qobject_cast<const QMessageBox*>(&window);
    return window.windowTitle().toStdString() +
           (box != nullptr ? ": " + box->text().toStdString() : std::string());
}

Robot::Robot(std::function<void(const std::string&)> failed) : failed_(std::move(failed))
{
    startTimer(kMilliseconds);
}

Robot::Step Robot::Next(const QDialog& window)
{
    if (!steps_.empty()) {
        Step step = std::move(steps_.front());
        steps_.pop_front();
        return step;
    }
    if (otherwise_) return otherwise_;
    failed_("unexpected window: " + Says(window));
    return [](QDialog& unexpected) { unexpected.done(kAbandoned); };
}

void Robot::timerEvent(QTimerEvent*)
{
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || window == busyWith_) return;
    const Step step = Next(*window);
    QDialog* const before = busyWith_;
    busyWith_ = window;
    try {
        step(*window);
    } catch (const std::exception& error) {
        failed_(Says(*window) + ": " + error.what());
        window->done(kAbandoned);
    }
    busyWith_ = before;
}

}  // namespace demo
