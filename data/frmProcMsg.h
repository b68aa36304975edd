// SPDX-License-Identifier: Apache-2.0
// frmProcMsg: the small window that tells which step a long procedure is at.
#pragma once

#include "platform/controls/Label.h"

namespace lodrin {

struct frmProcMsg {
    platform::Label caption{"Form1"};  // kept exactly so: it is what shops have always seen
    platform::Label Label1;            // the present step, inside the frame Frame1
};

}  // namespace lodrin
