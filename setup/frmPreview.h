// SPDX-License-Identifier: Apache-2.0
// frmPreview: the window "Print Preview", which shows how a grid looks on paper.
#pragma once

#include "platform/controls/GridPreview.h"
#include "platform/controls/Label.h"
#include "platform/controls/Window.h"

#include <functional>

namespace lodrin {

struct Shop;

// A caller fills the preview and shows the window (Dialogs::ShowPreview); it comes up in the main
// window's place and hands the place back when it goes.
//
//     shop.forms.preview.GEXPreview1.Fill(shop.window.grdDaily, "Jobs Today");
//     shop.dialogs.ShowPreview(shop);
struct frmPreview {
    platform::Label caption{"Print Preview"};
    platform::Window frame;
    // The inside of the frame. Units: logical pixels.
    int innerWidth = 0, innerHeight = 0;
    platform::GridPreview GEXPreview1;
    std::function<void()> unload;  // set by the view

    void Form_Resize(Shop& shop);
    // Failures are ignored.
    void Form_Unload(Shop& shop);
    // The user has finished with the preview.
    void GEXPreview1_Close(Shop& shop);
};

}  // namespace lodrin
