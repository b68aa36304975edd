// SPDX-License-Identifier: Apache-2.0
// QtDialogs: the program's windows, made when they are loaded and gone when they are unloaded.
#pragma once

#include "app/Dialogs.h"
#include "app/ui/EventDoor.h"

#include <QPointer>

#include <functional>
#include <memory>

class QDialog;
class QWidget;

namespace lodrin::ui {

class frmLodrinView;
class frmDateSelView;
class frmPreviewView;
class frmStatusView;

class QtDialogs : public Dialogs {
public:
    QtDialogs();
    ~QtDialogs() override;

    // Called when the main window has closed.
    std::function<void()> mainClosed;
    // What a program that ends inside an event does; LeaveProcess when empty.
    EventDoor::Leave leave;

    void ShowSplash(Shop& shop) override;
    void UnloadSplash(Shop& shop) override;
    void ShowMain(Shop& shop) override;
    void UnloadMain(Shop& shop) override;
    void ShowProcMsg(Shop& shop) override;
    void UnloadProcMsg(Shop& shop) override;
    void ShowGLSelect(Shop& shop) override;
    void UnloadGLSelect(Shop& shop) override;
    void ShowProgress(Shop& shop) override;
    void ShowStatus(Shop& shop) override;
    void ShowDateSel(Shop& shop) override;
    void ShowPreview(Shop& shop) override;

private:
    [[nodiscard]] EventDoor DoorOf(Shop& shop) const;

    std::unique_ptr<QWidget> splash_;
    std::unique_ptr<frmLodrinView> main_;
    QPointer<QWidget> procMsg_;  // may go with the window that owns it
    QPointer<QDialog> glSelect_;
    // Made once; they belong to the main window.
    QPointer<frmDateSelView> dateSel_;
    QPointer<frmPreviewView> preview_;
    QPointer<frmStatusView> status_;
};

}  // namespace lodrin::ui
