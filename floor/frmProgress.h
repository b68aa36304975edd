// SPDX-License-Identifier: Apache-2.0
// frmProgress: the dialog "Update Progress", in which whoever leaves a job says how far it is.
#pragma once

#include "platform/controls/Label.h"
#include "platform/controls/ListBox.h"

#include <cstdint>
#include <functional>

namespace lodrin {

struct Shop;

// Rule: the two public values survive its closing. The close box leaves `isCancelled` as the
//       dialog before left it: nobody answered, so the former answer stands.
struct frmProgress {
    std::int32_t lngWOID = 0;  // entry number of the repair order; set by the caller
    bool isCancelled = false;  // whether the caller shall stop

    platform::Label caption{"Update Progress"};
    platform::Label lblProgress{"Please update the job progress below."};
    platform::ListBox lstProgress;
    platform::Label cmdOkay{"Okay"};
    platform::Label cmdCancel{"Cancel"};
    std::function<void()> close;  // set by the view

    // All three ignore failures: nothing is reported.
    void Form_Load(Shop& shop);
    // Writes the chosen text into the repair order and closes.
    void cmdOkay_Click(Shop& shop);
    void cmdCancel_Click(Shop& shop);
};

}  // namespace lodrin
