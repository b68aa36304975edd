// SPDX-License-Identifier: Apache-2.0
// frmLodrin: the main window's controls, as data.
#pragma once

#include "platform/controls/Grid.h"
#include "platform/controls/Label.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/Window.h"

namespace lodrin {

struct Shop;

// Timer1. Units: interval in milliseconds, 0 while it stands still.
struct Timer : platform::Control {
    void SetInterval(int milliseconds)
    {
        interval = milliseconds;
        Changed();
    }
    int interval = 0;
};

// Stands where the name stands while nobody is chosen on the board.
inline constexpr const char* kNobodysName = "Employee Name";

struct frmLodrin {
    platform::Window frame;
    platform::Label caption{"Kelvaro Lodrin"};
    platform::Grid grdEmp;    // employee board
    platform::Grid grdDaily;  // the day's jobs
    platform::Label lblEmpName{kNobodysName};
    platform::Label lblDate{"01/04/01 5:55 PM"};
    platform::Label lblCurrentDate{"Current Date:"};
    platform::ComboBox cboRO;
    platform::ListBox lstHistory;
    platform::Label cmdBreak{"Go On Break"};
    platform::Label cmdEndDay{"End Day"};
    platform::Label cmdExit{"&Exit"};
    platform::Label stsLD;
    Timer Timer1;

    platform::Label mnuFile{"&File"};
    platform::Label mnuFileOpen{"&Open"};
    platform::Label mnuSyncEmp{"&Synchronize Employees"};
    platform::Label mnuSynchRO{"Synchronize &RO's"};
    platform::Label mnuSetup{"&Setup"};
    platform::Label mnuSetupItems{"Status Descriptions"};
};

// The window's event procedures. Location of each: "Sub frmLodrin!" + its name + "()".
void Form_Load(Shop& shop);
void InitForm(Shop& shop);
void Form_Activate(Shop& shop);
void Timer1_Timer(Shop& shop);
void Form_QueryUnload(Shop& shop);
void cmdExit_Click(Shop& shop);
void picExit_Click(Shop& shop);

}  // namespace lodrin
