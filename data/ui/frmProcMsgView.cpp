// SPDX-License-Identifier: Apache-2.0
#include "data/ui/frmProcMsgView.h"

#include "app/Shop.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/QtText.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

constexpr int kWidth = 560;

}  // namespace

frmProcMsgView::frmProcMsgView(Shop& shop, QWidget* owner)
    : QWidget(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    setObjectName("frmProcMsg");
    platform::qt::MirrorCaption(shop.forms.procMsg.caption, this);
    auto* frame = new QGroupBox(this);
    frame->setObjectName("Frame1");
    auto* step = new QLabel(frame);
    platform::qt::MirrorLabel(shop.forms.procMsg.Label1, step, "Label1");
    step->setAlignment(Qt::AlignCenter);
    step->setWordWrap(true);
    step->setMinimumHeight(64);
    platform::qt::Follow(shop.forms.procMsg.Label1, step, [&shop, step] {
        step->setText(platform::qt::ToQt(shop.forms.procMsg.Label1.Caption()));
        if (!step->isVisible()) return;
        step->repaint();
        shop.platform.events.LetPendingRun();
    });

    auto* inner = new QVBoxLayout(frame);
    inner->addWidget(step);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(16, 16, 16, 16);
    outer->addWidget(frame);
    setFixedWidth(platform::qt::WithinScreen(*this, QSize(kWidth, 0)).width());
    adjustSize();
}

void frmProcMsgView::showEvent(QShowEvent* event)
{
    platform::qt::StandOverOwner(*this);
    QWidget::showEvent(event);
}

}  // namespace lodrin::ui
