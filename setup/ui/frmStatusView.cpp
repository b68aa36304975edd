// SPDX-License-Identifier: Apache-2.0
#include "setup/ui/frmStatusView.h"

#include "app/Shop.h"
#include "data/Tables.h"
#include "platform/qt/GridWidget.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/ShopStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

using namespace platform::qt;

constexpr int kWording = Status::Column::Description;  // takes the room the others leave

}  // namespace

frmStatusView::frmStatusView(Shop& shop, EventDoor door, QWidget* owner)
    : OwnedDialog(owner), shop_(shop), door_(std::move(door))
{
    frmStatus& form = *shop_.forms.status;
    setObjectName("frmStatus");
    MirrorCaption(form.caption, this);
    BuildGrid();

    auto* help = new QLabel(this);
    MirrorLabel(form.lblHelp, help, "lblHelp");
    help->setWordWrap(true);
    auto* exit = new QPushButton(this);
    MirrorButton(form.cmdExit, exit, "cmdExit");
    exit->setAutoDefault(false);
    connect(exit, &QPushButton::clicked, this, &frmStatusView::reject);

    auto* footer = new QHBoxLayout;
    footer->setSpacing(kDialogMargin);
    footer->addWidget(help, 1);
    footer->addWidget(exit);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
    page->setSpacing(kSpacing);
    page->addWidget(grid_, 1);
    page->addLayout(footer);
    resize(WithinScreen(*this, QSize(860, 600)));
}

void frmStatusView::BuildGrid()
{
    grid_ = new GridWidget(shop_.forms.status->grdStatus, {kWording}, this);
    NameControl(grid_, "grdStatus", "Status descriptions");
    grid_->moved = [this](int row, int, int) {
        door_.Dialog([row](Shop& shop) { shop.forms.status->grdStatus.SetRow(row); });
    };
    grid_->typed = [this](int row, int, const std::string& text) {
        bool stored = false;
        door_.Dialog(
            [&](Shop& shop) { stored = shop.forms.status->StoreDescription(shop, row, text); });
        return stored;
    };
}

void frmStatusView::Wait()
{
    shop_.forms.status->close = [this] { accept(); };
    grid_->setFocus();
    exec();
    shop_.forms.status->close = nullptr;
}

void frmStatusView::reject()
{
    if (!grid_->FinishTyping()) return;
    door_.Dialog([](Shop& shop) { shop.forms.status->cmdExit_Click(shop); });
}

}  // namespace lodrin::ui
