// SPDX-License-Identifier: Apache-2.0
#include "setup/ui/frmDateSelView.h"

#include "app/Shop.h"
#include "platform/qt/CalendarWidget.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/ScrollPage.h"
#include "platform/qt/ShopStyle.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

using namespace platform::qt;

}  // namespace

frmDateSelView::frmDateSelView(Shop& shop, EventDoor door, QWidget* owner)
    : OwnedDialog(owner), shop_(shop), door_(std::move(door))
{
    frmDateSel& form = shop_.forms.dateSel;
    setObjectName("frmDateSel");
    MirrorCaption(form.caption, this);
    calendar_ = new CalendarWidget(form.Calendar1, this);
    NameControl(calendar_, "Calendar1", "Date to be selected");
    calendar_->chosen = [this](base::Date date) {
        door_.Dialog([date](Shop& on) { on.forms.dateSel.Calendar1.SetValue(date); });
    };
    calendar_->doubleClicked = [this] {
        door_.Dialog([](Shop& on) { on.forms.dateSel.Calendar1_DblClick(on); });
    };

    auto* exit = new QPushButton(this);
    MirrorButton(form.cmdExit, exit, "cmdExit");
    exit->setDefault(true);
    connect(exit, &QPushButton::clicked, this,
            [this] { door_.Dialog([](Shop& on) { on.forms.dateSel.cmdExit_Click(on); }); });
    auto* cancel = new QPushButton(this);
    MirrorButton(form.Command1, cancel, "Command1");
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &frmDateSelView::reject);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kSpacing);
    buttons->addStretch(1);
    buttons->addWidget(exit);
    buttons->addWidget(cancel);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
    page->setSpacing(kSpacing);
    page->addWidget(new ScrollPage(calendar_, this), 1);
    page->addLayout(buttons);
    resize(WithinScreen(*this, sizeHint()));
}

void frmDateSelView::Wait()
{
    shop_.forms.dateSel.hide = [this] { accept(); };
    door_.Always([](Shop& on) { on.forms.dateSel.Form_Activate(on); });
    calendar_->FocusDays();
    exec();
    shop_.forms.dateSel.hide = nullptr;
}

void frmDateSelView::reject()
{
    door_.Dialog([](Shop& on) { on.forms.dateSel.Command1_Click(on); });
}

}  // namespace lodrin::ui
