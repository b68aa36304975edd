// SPDX-License-Identifier: Apache-2.0
// EventDoor: what the slots of all windows call, so that no exception ever reaches Qt.
#pragma once

#include <functional>

namespace lodrin {
struct Shop;
}

namespace lodrin::ui {

// Rule: a program that ends while a slot runs leaves the process at once: nothing of Qt's between
//       the slot and the event loop may be unwound.
class EventDoor {
public:
    using Procedure = std::function<void(Shop&)>;
    using Leave = std::function<void(int exitCode)>;

    EventDoor(Shop& shop, Leave leave) : shop_(&shop), leave_(std::move(leave)) {}

    // An event of the main window, of the open dialog, or an activation or closing of a window.
    void Main(const Procedure& procedure) const noexcept;
    void Dialog(const Procedure& procedure) const noexcept;
    void Always(const Procedure& procedure) const noexcept;

private:
    using Dispatcher = void (*)(Shop&, const Procedure&);
    void Enter(Dispatcher dispatch, const Procedure& procedure) const noexcept;

    Shop* shop_;
    Leave leave_;
};

// Closes the databases and ends the process without unwinding: what a running program does when it
// ends inside an event.
[[noreturn]] void LeaveProcess(Shop& shop, int exitCode);

}  // namespace lodrin::ui
