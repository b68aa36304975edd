// SPDX-License-Identifier: Apache-2.0
// Dialogs: shows the program's windows; the only way a procedure reaches the screen.
#pragma once

namespace lodrin {

struct frmGLSelect;
struct Shop;

// Rule: the modal calls load the form, show it and return when it is closed. They are called only
//       by the functions of the same names in app/Dispatch.h, which keep the main window's events
//       out meanwhile.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    virtual void ShowSplash(Shop& shop) = 0;
    virtual void UnloadSplash(Shop& shop) = 0;
    // Loads the main window (Form_Load) and shows it.
    virtual void ShowMain(Shop& shop) = 0;
    virtual void UnloadMain(Shop& shop) = 0;
    virtual void ShowProcMsg(Shop& shop) = 0;
    virtual void UnloadProcMsg(Shop& shop) = 0;
    virtual void ShowGLSelect(Shop& shop) = 0;
    virtual void UnloadGLSelect(Shop& shop) = 0;
    virtual void ShowProgress(Shop& shop) = 0;
    // Requires: the form has been made.
    virtual void ShowStatus(Shop& shop) = 0;
    virtual void ShowDateSel(Shop& shop) = 0;
    // Not modal: returns at once, and the main window works on.
    virtual void ShowPreview(Shop& shop) = 0;
};

}  // namespace lodrin
