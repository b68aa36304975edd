// SPDX-License-Identifier: Apache-2.0
// frmSplash: the window shown while the program starts.
#pragma once

#include "platform/controls/Label.h"

namespace lodrin {

struct Shop;

struct frmSplash {
    platform::Label lblVersion;  // its one label

    // Location: "Sub frmSplash!Form_Load()". The view places the window.
    void Form_Load(Shop& shop);
};

// The splash stands this far below the middle of the screen. Units: twips.
inline constexpr int kSplashBelowCentre = 180;

}  // namespace lodrin
