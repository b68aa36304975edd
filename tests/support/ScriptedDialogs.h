// SPDX-License-Identifier: Apache-2.0
// ScriptedDialogs: a user who picks in the program's dialogs what the test laid down.
#pragma once

#include "app/Dialogs.h"

#include <deque>
#include <functional>
#include <string>

namespace tests {

// Rule: a dialog calls the same procedures of its form that the view calls. A labor type or
//       progress dialog that nobody expected throws std::logic_error, which no guard catches.
class ScriptedDialogs : public lodrin::Dialogs {
public:
    // In the next labor type dialog: picks the entry of that code and that department, confirms.
    void Pick(const std::string& code, const std::string& department);
    // Confirms what the next dialog proposes.
    void Confirm();
    // The same; leaves it by its close box when it cannot be confirmed.
    void ConfirmOrLeave();
    // Leaves the next dialog by its close box.
    void Leave();
    // In the next progress dialog: picks the text and confirms, or confirms what it proposes;
    // cancels; leaves by the close box.
    void PickProgress(const std::string& text);
    void ConfirmProgress();
    void CancelProgress();
    void LeaveProgress();
    // Dialogs still expected.
    [[nodiscard]] std::size_t Pending() const { return choices_.size() + progressActs_.size(); }

    // How often each window was shown, and whether it is now.
    int glSelects = 0, progresses = 0;
    int splashes = 0, procMsgs = 0, mains = 0;
    bool splashVisible = false, procMsgVisible = false, mainVisible = false;
    bool progressVisible = false;
    bool focusOnGLCodes = false;
    // Called while the status description window is open; afterwards the user leaves by Exit.
    int statuses = 0;
    std::function<void(lodrin::Shop&)> whileStatusIsOpen;
    // Called while the date dialog is open; it must hide it.
    std::function<void(lodrin::Shop&)> whileDateSelIsOpen;
    int previews = 0;
    // Called while the dialog is open, before the choice; and when the main window is shown (its
    // load belongs there).
    std::function<void(lodrin::Shop&)> whileGLSelectIsOpen, whileProgressIsOpen, whenMainIsShown;

    void ShowSplash(lodrin::Shop& shop) override;
    void UnloadSplash(lodrin::Shop& shop) override;
    void ShowMain(lodrin::Shop& shop) override;
    void UnloadMain(lodrin::Shop& shop) override;
    void ShowProcMsg(lodrin::Shop& shop) override;
    void UnloadProcMsg(lodrin::Shop& shop) override;
    void ShowGLSelect(lodrin::Shop& shop) override;
    void UnloadGLSelect(lodrin::Shop& shop) override;
    void ShowProgress(lodrin::Shop& shop) override;
    void ShowStatus(lodrin::Shop& shop) override;
    void ShowDateSel(lodrin::Shop& shop) override;
    void ShowPreview(lodrin::Shop& shop) override;

private:
    enum class Act { Pick, Confirm, ConfirmOrLeave, Leave };
    struct Choice {
        Act act = Act::Leave;
        std::string code, department;
    };
    std::deque<Choice> choices_;
    std::deque<std::function<void(lodrin::Shop&)>> progressActs_;
};

}  // namespace tests
