// SPDX-License-Identifier: Apache-2.0
// frmGLSelect: the dialog "Select Labor Type", where labor type and department are picked.
#pragma once

#include "platform/controls/Label.h"
#include "platform/controls/ListBox.h"

#include <functional>

namespace lodrin {

struct Shop;

struct frmGLSelect {
    platform::Label caption{"Select Labor Type"};
    platform::ListBox lstGLCodes;      // under "Labor Codes"
    platform::ListBox lstDepartments;  // under "Departments"
    platform::ListBox lstProgress;     // under "Progress"; its choice is not passed on
    platform::Label lblHelp;
    platform::Label cmdExit{"&Okay"};         // enabled only while both lists have a selection
    std::function<void()> setFocusToGLCodes;  // set by the view
    std::function<void()> close;              // set by the view

    // Location of each event procedure: "Sub frmGLSelect!" + its name + "()".
    void Form_Load(Shop& shop);
    void Form_Activate(Shop& shop);
    // Writes the choice into the main window's selection values and closes.
    // Rule: a department whose sequence has more than 16 bits is refused: that is told, and the
    //       dialog stays.
    void cmdExit_Click(Shop& shop);
    // A selection changed: the confirm button follows.
    void SelectionChanged();
};

}  // namespace lodrin
