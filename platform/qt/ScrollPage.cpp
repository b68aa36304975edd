// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/ScrollPage.h"

#include "platform/qt/ShopStyle.h"

#include <QScroller>

namespace platform::qt {

ScrollPage::ScrollPage(QWidget* content, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
}

QSize ScrollPage::sizeHint() const
{
    return widget()->sizeHint().expandedTo(widget()->minimumSize());
}

QSize ScrollPage::minimumSizeHint() const
{
    return widget()->minimumSizeHint().boundedTo({2 * kTouchTarget, 2 * kTouchTarget});
}

}  // namespace platform::qt
