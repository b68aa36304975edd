// SPDX-License-Identifier: Apache-2.0
// frmDateSel: the dialog "Date Selection", in which one date is picked.
#pragma once

#include "platform/controls/Calendar.h"
#include "platform/controls/Label.h"

#include <functional>
#include <string>

namespace lodrin {

struct Shop;

// A caller shows it modally (ShowDateSel in app/Dispatch.h) and reads values.selectedDate
// afterwards.
//
// Rule: it is hidden, not unloaded. The date is always passed through the text "mm/dd/yyyy", so its
//       time is dropped; cancelling writes back the date that was selected before. Location of each
//       guarded procedure: "Sub frmDateSel!" + its name + "()".
struct frmDateSel {
    platform::Label caption{"Date Selection"};
    platform::Calendar Calendar1;
    platform::Label cmdExit{"OK"};
    platform::Label Command1{"Cancel"};
    std::function<void()> hide;  // set by the view

    std::string startingDate;  // text of the date that was selected when the dialog was shown

    void Form_Activate(Shop& shop);
    void Calendar1_DblClick(Shop& shop);
    void picExit_Click(Shop& shop);
    void picCancel_Click(Shop& shop);
    // These two have no guard.
    void cmdExit_Click(Shop& shop);
    void Command1_Click(Shop& shop);
};

}  // namespace lodrin
