// SPDX-License-Identifier: Apache-2.0
#include "setup/frmPreview.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"

namespace lodrin {

namespace {

using platform::WindowState;

// The window has no such control; the text is what shops know from their logs.
constexpr const char* kLocation = "Sub frmPreview!lstGLCodes_KeyUp()";

}  // namespace

void frmPreview::Form_Resize(Shop& shop)
{
    const ResumeNext attempt(shop, kLocation);
    if (frame.State() == WindowState::Minimized) return;
    attempt([&] { GEXPreview1.Move({0, 0, innerWidth, innerHeight}); });
}

void frmPreview::Form_Unload(Shop& shop)
{
    const ResumeNext attempt = ResumeNext::Silently();
    platform::Window& main = shop.window.frame;
    if (frame.State() != WindowState::Normal)
        attempt([&] { main.SetState(frame.State()); });
    else
        attempt([&] { main.Move(frame.Where()); });
    attempt([&] { main.SetVisible(true); });
    attempt([&] { frame.SetVisible(false); });
}

void frmPreview::GEXPreview1_Close(Shop& shop)
{
    const ResumeNext attempt(shop, kLocation);
    attempt([&] {
        if (unload) unload();
    });
}

}  // namespace lodrin
