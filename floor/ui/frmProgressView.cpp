// SPDX-License-Identifier: Apache-2.0
#include "floor/ui/frmProgressView.h"

#include "app/Shop.h"
#include "platform/qt/ListWidget.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/ShopStyle.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

using namespace platform::qt;

void Okay(Shop& shop)
{
    shop.forms.progress.cmdOkay_Click(shop);
}

void Cancel(Shop& shop)
{
    shop.forms.progress.cmdCancel_Click(shop);
}

}  // namespace

frmProgressView::frmProgressView(Shop& shop, EventDoor door, QWidget* owner)
    : OwnedDialog(owner), shop_(shop), door_(std::move(door))
{
    frmProgress& form = shop_.forms.progress;
    setObjectName("frmProgress");
    MirrorCaption(form.caption, this);

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
    page->setSpacing(kSpacing);
    page->addLayout(BuildList(), 1);
    page->addLayout(BuildButtons());

    form.close = [this] { accept(); };
    resize(WithinScreen(*this, QSize(480, 440)));
}

frmProgressView::~frmProgressView()
{
    shop_.forms.progress.close = nullptr;
}

QBoxLayout* frmProgressView::BuildList()
{
    frmProgress& form = shop_.forms.progress;
    auto* prompt = new QLabel(this);
    MirrorLabel(form.lblProgress, prompt, "lblProgress");
    prompt->setWordWrap(true);
    auto* list = new ListWidget(form.lstProgress, this);
    NameControl(list, "lstProgress", "Progress");
    list->setMinimumHeight(3 * kRowHeight);
    list->chosen = [this](int entry) {
        door_.Dialog([entry](Shop& shop) { shop.forms.progress.lstProgress.SetListIndex(entry); });
    };
    prompt->setBuddy(list);
    list->setFocus();
    auto* column = new QVBoxLayout;
    column->setSpacing(kSpacing);
    column->addWidget(prompt);
    column->addWidget(list, 1);
    return column;
}

QBoxLayout* frmProgressView::BuildButtons()
{
    frmProgress& form = shop_.forms.progress;
    auto* okay = MakeButton(form.cmdOkay, "cmdOkay", &Okay);
    auto* cancel = MakeButton(form.cmdCancel, "cmdCancel", &Cancel);
    okay->setDefault(true);
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addStretch(1);
    row->addWidget(okay);
    row->addWidget(cancel);
    return row;
}

QPushButton* frmProgressView::MakeButton(platform::Label& label, const char* name,
                                         const EventDoor::Procedure& clicked)
{
    auto* button = new QPushButton(this);
    MirrorButton(label, button, name);
    connect(button, &QPushButton::clicked, this, [this, clicked] { door_.Dialog(clicked); });
    return button;
}

void frmProgressView::Wait()
{
    exec();
}

void frmProgressView::reject()
{
    door_.Dialog(&Cancel);
}

void frmProgressView::closeEvent(QCloseEvent* event)
{
    event->accept();
    done(Rejected);
}

}  // namespace lodrin::ui
