// SPDX-License-Identifier: Apache-2.0
#include "app/ui/frmSplashView.h"

#include "app/Shop.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/ShopStyle.h"

#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

constexpr int kWidth = 640;
constexpr int kBand = 132;  // height of the band that carries the program's name
constexpr int kMargin = 28;

}  // namespace

frmSplashView::frmSplashView(Shop& shop) : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
{
    setObjectName("frmSplash");
    setWindowTitle("Lodrin");
    auto* version = new QLabel(this);
    platform::qt::MirrorLabel(shop.forms.splash.lblVersion, version, "lblVersion");
    version->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kBand + kMargin, kMargin, kMargin);
    column->addWidget(version);
    setFixedWidth(platform::qt::WithinScreen(*this, QSize(kWidth, 0)).width());
    adjustSize();
}

void frmSplashView::showEvent(QShowEvent* event)
{
    const QRect whole = screen()->geometry();
    move(whole.left() + (whole.width() - frameGeometry().width()) / 2,
         whole.top() + (whole.height() - frameGeometry().height()) / 2 +
             kSplashBelowCentre / platform::qt::kTwipsPerPixel);
    QWidget::showEvent(event);
}

void frmSplashView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    const QRect band(0, 0, width(), kBand);
    painter.fillRect(band, palette().highlight());
    QFont font = painter.font();
    font.setPointSizeF(font.pointSizeF() * 2.6);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(band.adjusted(kMargin, 0, -kMargin, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     "Kelvaro Lodrin");
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace lodrin::ui
