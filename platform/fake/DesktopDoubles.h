// SPDX-License-Identifier: Apache-2.0
// DesktopDoubles: doubles of clipboard, pointer, events, instance and program.
#pragma once

#include "platform/Desktop.h"

namespace platform {

class RecordingClipboard : public Clipboard {
public:
    std::string text;
    int clears = 0;

    void Clear() override
    {
        text.clear();
        ++clears;
    }
    void SetText(std::string_view newText) override { text = newText; }
};

class RecordingPointer : public Pointer {
public:
    bool hourglass = false;
    int hourglasses = 0;  // how often it was shown

    void Hourglass() override
    {
        hourglass = true;
        ++hourglasses;
    }
    void Default() override { hourglass = false; }
};

class CountingEvents : public Events {
public:
    int count = 0;

    void LetPendingRun() override { ++count; }
};

class FixedInstance : public Instance {
public:
    bool anotherRuns = false;

    [[nodiscard]] bool AnotherRuns() override { return anotherRuns; }
};

// End() throws ProgramEnded, as the real one does.
class FixedProgram : public Program {
public:
    Version version{1, 0, 5};
    std::string executableName = "Lodrin";

    [[nodiscard]] Version VersionNumbers() const override { return version; }
    [[nodiscard]] std::string ExecutableName() const override { return executableName; }
};

}  // namespace platform
