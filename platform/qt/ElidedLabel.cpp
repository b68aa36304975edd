// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/ElidedLabel.h"

#include "platform/qt/QtText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace platform::qt {

namespace {

constexpr int kShortest = 12;  // characters

}  // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * kShortest, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    const bool cut = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       cut ? PlainTip(text()) : QString(), this);
    return true;
}

}  // namespace platform::qt
