// SPDX-License-Identifier: Apache-2.0
// Clipboard, Pointer, Events, Instance, Program: what the program asks of desktop and machine.
#pragma once

#include <string>
#include <string_view>

namespace platform {

class Clipboard {
public:
    Clipboard() = default;
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    virtual ~Clipboard() = default;

    virtual void Clear() = 0;
    virtual void SetText(std::string_view text) = 0;
};

// One application-wide pointer, not a stack.
class Pointer {
public:
    Pointer() = default;
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    virtual ~Pointer() = default;

    virtual void Hourglass() = 0;
    virtual void Default() = 0;
};

class Events {
public:
    Events() = default;
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;
    virtual ~Events() = default;

    // Lets windows repaint; admits neither input nor timer ticks.
    virtual void LetPendingRun() = 0;
};

class Instance {
public:
    Instance() = default;
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;
    virtual ~Instance() = default;

    // Whether another copy of this program runs on this machine.
    [[nodiscard]] virtual bool AnotherRuns() = 0;
};

struct Version {
    int major = 0, minor = 0, revision = 0;
};

class Program {
public:
    Program() = default;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    virtual ~Program() = default;

    [[nodiscard]] virtual Version VersionNumbers() const = 0;
    // Without its extension.
    [[nodiscard]] virtual std::string ExecutableName() const = 0;
    // Ends the program at once: no close handler runs, nothing is written.
    // Rule: throws ProgramEnded, which no guard catches.
    [[noreturn]] virtual void End();
};

// Unwinds the program when it ends. Deliberately no std::exception.
struct ProgramEnded {
    int exitCode = 0;
};

}  // namespace platform
