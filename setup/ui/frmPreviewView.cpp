// SPDX-License-Identifier: Apache-2.0
#include "setup/ui/frmPreviewView.h"

#include "app/Shop.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/PreviewWidget.h"
#include "platform/qt/WindowFrame.h"

#include <QCloseEvent>

namespace lodrin::ui {

using namespace platform::qt;

namespace {

constexpr QSize kSmallest(480, 300);

}  // namespace

frmPreviewView::frmPreviewView(Shop& shop, EventDoor door, QWidget* owner)
    : QWidget(owner, Qt::Window), shop_(shop), door_(std::move(door))
{
    frmPreview& form = shop_.forms.preview;
    setObjectName("frmPreview");
    setAttribute(Qt::WA_DeleteOnClose);
    MirrorCaption(form.caption, this);
    auto* preview = new PreviewWidget(form.GEXPreview1, this);
    preview->closed = [this] {
        door_.Main([](Shop& on) { on.forms.preview.GEXPreview1_Close(on); });
    };
    setMinimumSize(kSmallest);
    form.unload = [this] { close(); };
    if (owner != nullptr) {
        setGeometry(owner->geometry());
        setWindowState(owner->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized));
    }
    ObeyFrame(form.frame, this);
}

bool frmPreviewView::event(QEvent* event)
{
    const bool done = QWidget::event(event);
    if (IsAboutItsPlace(*event)) TellFrame(shop_.forms.preview.frame, *this);
    if (event->type() == QEvent::Resize) Resized();
    return done;
}

void frmPreviewView::Resized()
{
    shop_.forms.preview.innerWidth = width();
    shop_.forms.preview.innerHeight = height();
    door_.Always([](Shop& on) { on.forms.preview.Form_Resize(on); });
}

void frmPreviewView::closeEvent(QCloseEvent* event)
{
    door_.Always([](Shop& on) {
        on.forms.preview.Form_Unload(on);
        on.forms.preview.unload = nullptr;
        on.forms.preview.GEXPreview1.Clear();
    });
    event->accept();
}

}  // namespace lodrin::ui
