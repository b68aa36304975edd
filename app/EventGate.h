// SPDX-License-Identifier: Apache-2.0
// EventGate: who may handle an event now: one level per open modal window, one procedure per level.
#pragma once

#include <vector>

namespace lodrin {

// Rule: the main window is level 0. A box is a level that takes no events of ours; a dialog takes
//       the events of its own controls. Events that may not run are dropped, not queued.
class EventGate {
public:
    enum class Modal { Box, Dialog };

    // Held while an event procedure runs.
    class Procedure {
    public:
        explicit Procedure(EventGate& gate) : gate_(gate) { gate_.busy_.back() = true; }
        ~Procedure() { gate_.busy_.back() = false; }
        Procedure(const Procedure&) = delete;
        Procedure& operator=(const Procedure&) = delete;

    private:
        EventGate& gate_;
    };

    // Held while a modal window is open.
    class Window {
    public:
        Window(EventGate& gate, Modal kind) : gate_(gate)
        {
            gate_.busy_.push_back(kind == Modal::Box);
        }
        ~Window() { gate_.busy_.pop_back(); }
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;

    private:
        EventGate& gate_;
    };

    [[nodiscard]] bool MainMayRun() const { return busy_.size() == 1 && !busy_.back(); }
    [[nodiscard]] bool DialogMayRun() const { return busy_.size() > 1 && !busy_.back(); }

private:
    std::vector<bool> busy_{false};
};

}  // namespace lodrin
