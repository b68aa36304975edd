// SPDX-License-Identifier: Apache-2.0
#include "app/ui/QtDialogs.h"

#include "app/Shop.h"
#include "app/ui/frmLodrinView.h"
#include "app/ui/frmSplashView.h"
#include "data/ui/frmProcMsgView.h"
#include "floor/ui/frmGLSelectView.h"
#include "floor/ui/frmProgressView.h"
#include "setup/ui/frmDateSelView.h"
#include "setup/ui/frmPreviewView.h"
#include "setup/ui/frmStatusView.h"

namespace lodrin::ui {

QtDialogs::QtDialogs() = default;

QtDialogs::~QtDialogs()
{
    delete procMsg_;
    delete status_;
    delete dateSel_;
    delete preview_;
}

EventDoor QtDialogs::DoorOf(Shop& shop) const
{
    if (leave) return {shop, leave};
    return {shop, [&shop](int exitCode) { LeaveProcess(shop, exitCode); }};
}

void QtDialogs::ShowSplash(Shop& shop)
{
    shop.forms.splash.Form_Load(shop);
    splash_ = std::make_unique<frmSplashView>(shop);
    splash_->show();
}

void QtDialogs::UnloadSplash(Shop&)
{
    if (!splash_) return;
    splash_->hide();
    // It is unloaded while the main window becomes active, and the desktop still tells the splash
    // that it no longer is: it may only go afterwards.
    splash_.release()->deleteLater();
}

void QtDialogs::ShowMain(Shop& shop)
{
    main_ = std::make_unique<frmLodrinView>(shop, DoorOf(shop));
    main_->closed = [this] {
        if (mainClosed) mainClosed();
    };
    Form_Load(shop);
    main_->show();
    shop.platform.events.LetPendingRun();
    // Some desktops activate no window; the first activation happens all the same, and only once.
    if (shop.state.firstActivation) main_->Activate();
}

void QtDialogs::UnloadMain(Shop&)
{
    if (main_) main_->Unload();
}

void QtDialogs::ShowProcMsg(Shop& shop)
{
    QWidget* owner = main_ && main_->isVisible() ? main_.get() : splash_.get();
    delete procMsg_;
    procMsg_ = new frmProcMsgView(shop, owner);
    procMsg_->show();
    shop.platform.events.LetPendingRun();
}

void QtDialogs::UnloadProcMsg(Shop&)
{
    delete procMsg_;
}

void QtDialogs::ShowGLSelect(Shop& shop)
{
    shop.forms.glSelect.Form_Load(shop);
    frmGLSelectView dialog(shop, DoorOf(shop), main_.get());
    glSelect_ = &dialog;
    dialog.Wait();
}

void QtDialogs::UnloadGLSelect(Shop&)
{
    if (glSelect_) glSelect_->reject();
}

void QtDialogs::ShowProgress(Shop& shop)
{
    shop.forms.progress.Form_Load(shop);
    frmProgressView(shop, DoorOf(shop), main_.get()).Wait();
}

void QtDialogs::ShowStatus(Shop& shop)
{
    shop.forms.status->Form_Load(shop);
    if (!status_) status_ = new frmStatusView(shop, DoorOf(shop), main_.get());
    status_->Wait();
}

void QtDialogs::ShowDateSel(Shop& shop)
{
    if (!dateSel_) dateSel_ = new frmDateSelView(shop, DoorOf(shop), main_.get());
    dateSel_->Wait();
}

void QtDialogs::ShowPreview(Shop& shop)
{
    if (!preview_) preview_ = new frmPreviewView(shop, DoorOf(shop), main_.get());
    preview_->show();
    preview_->raise();
}

}  // namespace lodrin::ui
