// SPDX-License-Identifier: Apache-2.0
#include "floor/ui/frmGLSelectView.h"

#include "app/Shop.h"
#include "platform/qt/Heading.h"
#include "platform/qt/ListWidget.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/ShopStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

using namespace platform::qt;

}  // namespace

frmGLSelectView::frmGLSelectView(Shop& shop, EventDoor door, QWidget* owner)
    : OwnedDialog(owner), shop_(shop), door_(std::move(door))
{
    frmGLSelect& form = shop_.forms.glSelect;
    setObjectName("frmGLSelect");
    MirrorCaption(form.caption, this);

    auto* lists = new QHBoxLayout;
    lists->setSpacing(kDialogMargin);
    lists->addLayout(BuildList(form.lstGLCodes, "lstGLCodes", "&Labor Codes"), 1);
    lists->addLayout(BuildList(form.lstDepartments, "lstDepartments", "&Departments"), 1);
    lists->addLayout(BuildList(form.lstProgress, "lstProgress", "&Progress"), 1);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
    page->setSpacing(kSpacing);
    page->addLayout(lists, 1);
    page->addLayout(BuildFooter());

    form.setFocusToGLCodes = [this] { findChild<QWidget*>("lstGLCodes")->setFocus(); };
    form.close = [this] { accept(); };
    resize(WithinScreen(*this, QSize(960, 520)));
}

frmGLSelectView::~frmGLSelectView()
{
    shop_.forms.glSelect.setFocusToGLCodes = nullptr;
    shop_.forms.glSelect.close = nullptr;
}

QBoxLayout* frmGLSelectView::BuildList(platform::ListBox& list, const char* name,
                                       const QString& title)
{
    auto* shown = new ListWidget(list, this);
    QString plain = title;
    NameControl(shown, name, plain.remove('&'));
    shown->chosen = [this, &list](int entry) {
        door_.Dialog([&list, entry](Shop& shop) {
            list.SetListIndex(entry);
            shop.forms.glSelect.SelectionChanged();
        });
    };
    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(Heading(title, shown));
    column->addWidget(shown, 1);
    return column;
}

QBoxLayout* frmGLSelectView::BuildFooter()
{
    auto* help = new QLabel(this);
    MirrorLabel(shop_.forms.glSelect.lblHelp, help, "lblHelp");
    help->setWordWrap(true);
    auto* confirm = new QPushButton(this);
    MirrorButton(shop_.forms.glSelect.cmdExit, confirm, "cmdExit");
    confirm->setDefault(true);
    connect(confirm, &QPushButton::clicked, this,
            [this] { door_.Dialog([](Shop& shop) { shop.forms.glSelect.cmdExit_Click(shop); }); });
    auto* row = new QHBoxLayout;
    row->setSpacing(kDialogMargin);
    row->addWidget(help, 1);
    row->addWidget(confirm);
    return row;
}

void frmGLSelectView::Wait()
{
    // Some desktops activate no window.
    QTimer::singleShot(0, this, [this] {
        if (!activated_) Activate();
    });
    exec();
}

bool frmGLSelectView::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) Activate();
    return OwnedDialog::event(event);
}

void frmGLSelectView::Activate()
{
    activated_ = true;
    door_.Always([](Shop& shop) { shop.forms.glSelect.Form_Activate(shop); });
}

}  // namespace lodrin::ui
